#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "tests/support/Toolkit.h"

/// Runs the tests in a fresh program folder, which goes when they end. It holds no tessel.dat unless a test puts one
/// there; appPath and dataPath point into it.
int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    // The list of cases is asked for during the build, where no display may be needed.
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir folder;
    qputenv("TESSEL_HOME", folder.path().toUtf8());
    // The user's own settings are out of reach.
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
    QApplication application(argc, argv);
    QApplication::setStyle(u"Fusion"_s);
    QDir(folder.path()).mkdir(u"Data"_s);
    appPath = withSeparator(programFolder());
    dataPath = withSeparator(joinPath(programFolder(), u"Data"_s));
    return RUN_ALL_TESTS();
}
