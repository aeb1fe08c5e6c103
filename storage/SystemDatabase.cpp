#include "storage/SystemDatabase.h"

#include "app/base/Definitions.h"
#include "app/base/FileSystem.h"
#include "storage/SqliteError.h"

std::unique_ptr<Connection> openSystemDatabase() {
    const QString path = appPath + QLatin1String("tessel.dat");
    if (!fso().FileExists(path))
        throw cannotOpenError(path);
    auto connection = std::make_unique<Connection>();
    connection->Open(path, QString::fromLatin1(systemKey), Connection::readWriteCreate);
    return connection;
}
