#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "tests/support/OtherProgram.h"
#include "tests/support/ShippedProgram.h"

using namespace Qt::StringLiterals;

TEST(StartUp, ASecondCopyInTheSameFolderEnds) {
    const QTemporaryDir home, elsewhere;
    const auto start = [](const QTemporaryDir& folder) {
        return std::make_unique<ShippedProgram>(QStringList(),
                                                ShippedProgram::Variables{{u"TESSEL_HOME"_s, folder.path()}});
    };
    // A program that may run makes its folder for libraries.
    const auto runs = [](ShippedProgram& program, const QTemporaryDir& folder) {
        return program.waitUntil([&] { return QDir(folder.filePath(u"Data"_s)).exists(); });
    };
    const auto first = start(home);
    ASSERT_TRUE(runs(*first, home)) << qPrintable(first->lastWords());
    EXPECT_TRUE(start(home)->waitForEnd() && first->isRunning());
    EXPECT_TRUE(runs(*start(elsewhere), elsewhere));
}

TEST(StartUp, AnInstalledCopyMakesTheFolderOfItsUserOnceAndWhole) {
    const QTemporaryDir place;
    const QDir users(place.filePath(u"share/tessel"_s));
    // Gives the system database that the user has when a copy that brings `delivered` runs.
    const auto start = [&](const QString& delivered) {
        ShippedProgram program(
            {delivered}, {{u"PLACE"_s, place.path()}, {u"XDG_DATA_HOME"_s, place.filePath(u"share"_s)}},
            "cd \"$PLACE\" && unset TESSEL_HOME && cp \"$1\" . && mkdir -p share/tessel.new Samples/Data && "
            "touch share/tessel.new/unfinished && echo \"$2\" | tee Samples/tessel.dat >Samples/Data/a.bdb && exec "
            "./tessel");
        EXPECT_TRUE(program.waitUntil([&] { return users.exists(u"Data"_s); })) << qPrintable(program.lastWords());
        return bytesOf(users.filePath(u"tessel.dat"_s));
    };
    EXPECT_EQ(start(u"first"_s), "first\n");
    EXPECT_EQ(users.entryList(QDir::Files) + QDir(users.filePath(u"Data"_s)).entryList(QDir::Files),
              QStringList({u"tessel.dat"_s, u"a.bdb"_s}));
    overwrite(users.filePath(u"tessel.dat"_s), "mine");
    EXPECT_TRUE(QDir(users.filePath(u"Data"_s)).removeRecursively());
    EXPECT_EQ(start(u"second"_s), "mine");
}
