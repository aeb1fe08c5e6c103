#include "app/shell/modMain.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include "app/base/Definitions.h"
#include "app/base/FileSystem.h"
#include "app/base/Guarded.h"
#include "app/base/Paths.h"
#include "app/base/Text.h"
#include "app/platform/Platform.h"
#include "app/shell/ProgramFolder.h"
#include "app/shell/frmMain.h"
#include "storage/SystemDatabase.h"

using namespace Qt::StringLiterals;

void Main() {
    guarded({"modMain", "Main"}, [] {
        if (!platform::becomeRunningCopy(programFolder())) {
            QApplication::quit();
            return;
        }
        SetBasePrm();
        prepareSystemDatabase();
        auto* window = new frmMain;
        window->setAttribute(Qt::WA_DeleteOnClose);
        window->MDIForm_Load();
        window->show();
    });
}

void SetBasePrm() {
    guarded({"modMain", "SetBasePrm"}, [] {
        // The whole tail of the command line is one path.
        const QString line = platform::commandLine();
        cmdFile = trimBlanks(line).isEmpty() ? QString() : line;
        appPath = withSeparator(programFolder());
        const QString data = joinPath(programFolder(), u"Data"_s);
        dataPath = withSeparator(data);
        makeProgramFolder();
        if (!fso().FolderExists(data))
            fso().CreateFolder(data);
    });
}

void loadChineseTexts() {
    static QTranslator translator;
    const QLocale chinese(QLocale::Chinese, QLocale::China);
    QLocale::setDefault(chinese);
    const QString name = u"qtbase_zh_CN"_s;
    if (translator.load(name, joinPath(installFolder(), u"Res"_s)) ||
        translator.load(name, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&translator);
}
