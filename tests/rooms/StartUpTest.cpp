#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "tests/support/OtherProgram.h"
#include "tests/support/ShippedProgram.h"

using namespace Qt::StringLiterals;

TEST(StartUp, AnInstalledCopyMakesItsUsersFolderOnceAndWholeAndRunsOnceInIt) {
    const QTemporaryDir user, another;
    // A copy that brings `delivered`, where an earlier start was broken off.
    const auto start = [](const QTemporaryDir& of, const QString& delivered) {
        return std::make_unique<ShippedProgram>(
            QStringList{delivered},
            ShippedProgram::Variables{{u"PLACE"_s, of.path()}, {u"XDG_DATA_HOME"_s, of.filePath(u"own"_s)}},
            "cd \"$PLACE\" && unset TESSEL_HOME && cp -f \"$1\" . && mkdir -p own/tessel.new/half Samples/Data && "
            "echo \"$2\" >Samples/tessel.dat && exec ./tessel");
    };
    const auto runs = [](ShippedProgram& program, const QTemporaryDir& of) {
        return program.waitUntil([&] { return QDir(of.filePath(u"own/tessel/Data"_s)).exists(); });
    };
    const QString system = user.filePath(u"own/tessel/tessel.dat"_s);
    {
        const auto first = start(user, u"first"_s);
        ASSERT_TRUE(runs(*first, user)) << qPrintable(first->lastWords());
        EXPECT_FALSE(QDir(user.filePath(u"own/tessel/half"_s)).exists());
        EXPECT_TRUE(start(user, {})->waitForEnd() && first->isRunning());
        EXPECT_TRUE(runs(*start(another, {}), another));
    }
    EXPECT_EQ(bytesOf(system), "first\n");
    overwrite(system, "mine");
    QDir().rmdir(user.filePath(u"own/tessel/Data"_s));
    EXPECT_TRUE(runs(*start(user, u"second"_s), user));
    EXPECT_EQ(bytesOf(system), "mine");
}
