#include "app/base/Definitions.h"

#include "app/base/ErrorLog.h"
#include "app/base/FileSystem.h"

using namespace Qt::StringLiterals;

QString appPath;
QString dataPath;
QString cmdFile;

clsErrorLog& errLog() {
    static clsErrorLog log;
    return log;
}

FileSystem& fso() {
    static FileSystem fileSystem;
    return fileSystem;
}

QString applicationTitle() { return u"清单库编辑器"_s; }

QString applicationVersion() { return QStringLiteral(TESSEL_VERSION); }
