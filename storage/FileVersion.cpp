#include "storage/FileVersion.h"

#include <sqlite3.h>

#include <QFileInfo>

#include "app/base/Guarded.h"
#include "storage/Connection.h"
#include "storage/Lookups.h"

FileVersion::FileVersion(Connection& connection) : m_connection(connection) { accept(); }

qint64 FileVersion::dataVersion() const {
    return m_connection.OpenRecordset("PRAGMA main.data_version;").number("data_version");
}

void FileVersion::accept() {
    m_version = dataVersion();
    acceptOwnWrites();
}

void FileVersion::acceptOwnWrites() {
    const QFileInfo file(m_connection.path());
    m_written = file.lastModified();
    m_size = file.size();
}

bool FileVersion::isChanged() const {
    const Connection::WithoutWaiting quiet(m_connection);
    qint64 version = m_version;
    succeedsUnless(SQLITE_BUSY, [&] { version = dataVersion(); });
    return version != m_version;
}

bool FileVersion::isTouched() {
    const QFileInfo file(m_connection.path());
    if (file.lastModified() == m_written && file.size() == m_size)
        return false;
    acceptOwnWrites();
    m_connection.forgetPages();
    return true;
}
