#include "tests/support/Extent.h"

#include <QFile>
#include <cstdio>

int extent(int ordinary, int atLength) { return qEnvironmentVariableIsSet("TESSEL_TEST_LONG") ? atLength : ordinary; }

void reportFigures(const QString& line) {
    const QByteArray text = line.toUtf8() + '\n';
    std::fputs(text.constData(), stdout);
    const QString path = qEnvironmentVariable("TESSEL_TEST_FIGURES");
    if (path.isEmpty())
        return;
    QFile file(path);
    if (file.open(QIODevice::Append))
        file.write(text);
}
