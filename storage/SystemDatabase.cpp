#include "storage/SystemDatabase.h"

#include "app/base/Definitions.h"
#include "app/base/FileSystem.h"
#include "storage/KeyedAccess.h"
#include "storage/SqliteError.h"

using namespace Qt::StringLiterals;

namespace {

QString systemDatabasePath() { return appPath + u"tessel.dat"_s; }

}  // namespace

std::unique_ptr<Connection> openSystemDatabase() {
    const QString path = systemDatabasePath();
    if (!fso().FileExists(path))
        throw cannotOpenError(path);
    auto connection = std::make_unique<Connection>();
    connection->Open(path, QString::fromLatin1(systemKey), Connection::readWriteCreate);
    return connection;
}

void prepareSystemDatabase() { deriveKeyAhead(systemDatabasePath(), QString::fromLatin1(systemKey)); }

bool isSystemDatabaseBeingPrepared() { return isKeyBeingDerived(systemDatabasePath(), QString::fromLatin1(systemKey)); }
