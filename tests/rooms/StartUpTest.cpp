#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "app/base/Paths.h"
#include "tests/support/ShippedProgram.h"

using namespace Qt::StringLiterals;

TEST(StartUp, ASecondCopyEndsAndACrashedOneDoesNotBlock) {
    const QTemporaryDir home, elsewhere;
    const auto start = [&](const QTemporaryDir& folder) {
        return std::make_unique<ShippedProgram>(
            QStringList(), ShippedProgram::Variables{{u"TESSEL_HOME"_s, folder.path()},
                                                     {u"XDG_CONFIG_HOME"_s, joinPath(home.path(), u"config"_s)},
                                                     {u"QT_QPA_PLATFORM"_s, u"offscreen"_s}});
    };
    // A program that may run makes its folder for libraries.
    const auto runs = [](ShippedProgram& program, const QTemporaryDir& folder) {
        return program.waitUntil([&] { return QDir(joinPath(folder.path(), u"Data"_s)).exists(); });
    };
    const auto first = start(home);
    ASSERT_TRUE(runs(*first, home)) << qPrintable(first->lastWords());
    EXPECT_TRUE(start(home)->waitForEnd());
    EXPECT_TRUE(first->isRunning());
    EXPECT_TRUE(runs(*start(elsewhere), elsewhere)) << "another folder is another program";
    first->kill();
    ASSERT_TRUE(QDir(joinPath(home.path(), u"Data"_s)).removeRecursively());
    EXPECT_TRUE(runs(*start(home), home));
}
