// Long random sequences of everything that can be done in an editor window, judged after every step.

#include <gtest/gtest.h>

#include "tests/support/Extent.h"
#include "tests/support/Libraries.h"
#include "tests/walk/Judge.h"

TEST(Walk, WindowFileAndModelAgreeAfterEveryStep) {
    constexpr int steps = 800;
    QString (*const libraries[])() = {sampleCopy, awkwardLibrary, libraryAtTheLimits};
    qint64 done = 0;
    repeated(6, [&](unsigned seed) {
        const QString library = libraries[seed % std::size(libraries)]();
        {
            EditorDriver driver(library);
            RandomUser user(driver, seed, {});
            const Judge judge(driver, user);
            for (int step = 1; step <= steps && !::testing::Test::HasFailure(); ++step, ++done) {
                user.step();
                if (::testing::Test::HasFailure())
                    ADD_FAILURE() << "at step " << step << ":\n  " << qPrintable(user.story());
            }
        }
        EXPECT_EQ(rowsInFile(library, "PRAGMA integrity_check"), QStringList{u"ok"_s});
        EXPECT_EQ(rowsInFile(library, "SELECT name FROM sqlite_schema WHERE type<>'table'"), QStringList());
    });
    counted(u"steps of the random user compared"_s, done);
}
