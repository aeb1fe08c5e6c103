// Long random sequences of everything that can be done in an editor window. After every step the window shows what a
// fresh load of its file shows, apart from the differences that Prescribed knows by name.
//
// TESSEL_TEST_SEED sets another seed for all sequences.

#include <gtest/gtest.h>

#include "tests/support/Extent.h"
#include "tests/support/Libraries.h"
#include "tests/support/OtherProgram.h"
#include "tests/walk/RandomUser.h"

using namespace Qt::StringLiterals;

namespace {

struct Sequence {
    const char* name;
    QString (*library)();
    unsigned seed;
};

class WindowIsFile : public ::testing::TestWithParam<Sequence> {};

}  // namespace

TEST_P(WindowIsFile, AfterEveryStep) {
    const int steps = extent(600, 20'000);
    const unsigned seed = qEnvironmentVariableIsSet("TESSEL_TEST_SEED")
                              ? static_cast<unsigned>(qEnvironmentVariableIntValue("TESSEL_TEST_SEED"))
                              : GetParam().seed;
    const QString library = GetParam().library();
    const Rations installed;
    {
        EditorDriver driver(library);
        RandomUser user(driver, seed);
        for (int step = 1; step <= steps; ++step) {
            user.step();
            ASSERT_FALSE(HasFailure()) << "at step " << step << " of seed " << seed << ":\n  "
                                       << qPrintable(user.story());
        }
    }
    reportFigures(u"random user, %1: %2 steps compared"_s.arg(QLatin1String(GetParam().name)).arg(steps));
    EXPECT_EQ(rowsInFile(library, "PRAGMA integrity_check"), QStringList{u"ok"_s});
    EXPECT_EQ(rowsInFile(library, "SELECT name FROM sqlite_schema WHERE type<>'table'"), QStringList());
}

INSTANTIATE_TEST_SUITE_P(Libraries, WindowIsFile,
                         ::testing::Values(Sequence{"Sample", sampleCopy, 1}, Sequence{"Sample2", sampleCopy, 2},
                                           Sequence{"Awkward", awkwardLibrary, 3},
                                           Sequence{"Awkward2", awkwardLibrary, 4},
                                           Sequence{"Limits", libraryAtTheLimits, 5}),
                         [](const auto& sequence) { return std::string(sequence.param.name); });
