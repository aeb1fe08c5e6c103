#include <QCoreApplication>

#include "administration/LibrariesCommand.h"
#include "app/base/Definitions.h"
#include "app/base/Guarded.h"
#include "app/base/Paths.h"

using namespace Qt::StringLiterals;

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    // The editor's, by which the user's own program folder is named.
    QCoreApplication::setApplicationName(u"tessel"_s);
    appPath = withSeparator(programFolder());
    dataPath = withSeparator(appPath + u"Data"_s);
    // As the console reads it.
    QTextStream said(stdout), complained(stderr);
    said.setEncoding(QStringConverter::System);
    complained.setEncoding(QStringConverter::System);
    constexpr int failed = 3;
    return guarded(
        {"tessel-libraries", "main"},
        [&] { return runLibrariesCommand(QCoreApplication::arguments().mid(1), said, complained); },
        [] { return failed; });
}
