#include "storage/FileVersion.h"

#include <sqlite3.h>

#include <QFileInfo>

#include "app/base/Guarded.h"
#include "storage/Connection.h"
#include "storage/Lookups.h"

FileVersion::FileVersion(Connection& connection) : m_connection(connection) { (void)accept(); }

/// False when the file is locked.
bool FileVersion::read(qint64& version) const {
    const Connection::WithoutWaiting quiet(m_connection);
    return succeedsUnless(
        SQLITE_BUSY, [&] { version = m_connection.OpenRecordset("PRAGMA main.data_version;").number("data_version"); });
}

bool FileVersion::accept() {
    acceptOwnWrites();
    return read(m_version);
}

void FileVersion::acceptOwnWrites() {
    const QFileInfo file(m_connection.path());
    m_written = file.lastModified();
    m_size = file.size();
}

bool FileVersion::isChanged() const {
    qint64 version = m_version;
    return read(version) && version != m_version;
}

bool FileVersion::isTouched() {
    const QFileInfo file(m_connection.path());
    if (file.lastModified() == m_written && file.size() == m_size)
        return false;
    acceptOwnWrites();
    m_connection.forgetPages();
    return true;
}
