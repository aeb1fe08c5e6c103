#include "app/base/Definitions.h"

#include "app/base/ErrorLog.h"
#include "app/base/FileSystem.h"

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

QString applicationTitle() { return QStringLiteral("清单库编辑器"); }

QString applicationVersion() { return QStringLiteral(TESSEL_VERSION); }
