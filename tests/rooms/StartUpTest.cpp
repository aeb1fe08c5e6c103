#include "tests/support/ShippedProgram.h"

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
