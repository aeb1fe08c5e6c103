#include "tests/support/Extent.h"

#include <cstdio>

void repeated(unsigned ordinary, const std::function<void(unsigned)>& once) {
    const auto number = [](const char* name) { return static_cast<unsigned>(qEnvironmentVariableIntValue(name)); };
    const bool chosen = qEnvironmentVariableIsSet("TESSEL_TEST_SEED");
    const unsigned seconds = number("TESSEL_TEST_SECONDS");
    const QDeadlineTimer end(std::chrono::seconds{seconds});
    const unsigned first = chosen ? number("TESSEL_TEST_SEED") : 1;
    for (unsigned seed = first; seconds ? !end.hasExpired() : seed < first + (chosen ? 1 : ordinary); ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        once(seed);
        if (testing::Test::HasFailure())
            return;
    }
}

void counted(const QString& what, qint64 number) {
    const QByteArray text = u"%1: %2\n"_s.arg(what).arg(number).toUtf8();
    std::fputs(text.constData(), stdout);
    QFile figures(qEnvironmentVariable("TESSEL_TEST_FIGURES"));
    if (!figures.fileName().isEmpty() && figures.open(QIODevice::Append))
        figures.write(text);
}
