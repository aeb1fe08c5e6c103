#include "storage/ChangeRecorder.h"

#include <sqlite3.h>

#include <memory>

#include "storage/Connection.h"
#include "storage/SqliteError.h"

namespace {

using Buffer = std::unique_ptr<void, void (*)(void*)>;

/// SQLite's own tables begin so.
constexpr char ownTables[] = "sqlite_";

int isRecorded(void*, const char* table) { return sqlite3_strnicmp(table, ownTables, sizeof ownTables - 1) != 0; }

/// Any row that is not as it was recorded ends the whole.
int stop(void* conflict, int, sqlite3_changeset_iter*) {
    *static_cast<bool*>(conflict) = true;
    return SQLITE_CHANGESET_ABORT;
}

}  // namespace

ChangeRecorder::ChangeRecorder(Connection& connection) : m_connection(connection), m_schema(schemaVersion()) {
    begin();
}

ChangeRecorder::~ChangeRecorder() { sqlite3session_delete(m_session); }

qint64 ChangeRecorder::schemaVersion() const {
    return m_connection.OpenRecordset("PRAGMA main.schema_version;").number("schema_version");
}

void ChangeRecorder::begin() {
    int code = sqlite3session_create(m_connection.m_database, "main", &m_session);
    int withoutKey = 1;
    if (code == SQLITE_OK)
        code = sqlite3session_object_config(m_session, SQLITE_SESSION_OBJCONFIG_ROWID, &withoutKey);
    if (code == SQLITE_OK)
        code = sqlite3session_attach(m_session, nullptr);
    if (code != SQLITE_OK)
        throw sqliteError(nullptr, code);
    sqlite3session_table_filter(m_session, isRecorded, nullptr);
}

bool ChangeRecorder::hasChanges() const { return m_session && sqlite3session_isempty(m_session) == 0; }

QByteArray ChangeRecorder::take() {
    if (!hasChanges())
        return {};
    int size = 0;
    void* bytes = nullptr;
    const int code = sqlite3session_changeset(m_session, &size, &bytes);
    const Buffer changes(bytes, sqlite3_free);
    sqlite3session_delete(std::exchange(m_session, nullptr));
    begin();
    if (code != SQLITE_OK)
        throw sqliteError(m_connection.m_database, code);
    return QByteArray(static_cast<const char*>(bytes), size);
}

bool ChangeRecorder::isUpdateOfOneRow(const QByteArray& changes) {
    sqlite3_changeset_iter* rows = nullptr;
    QByteArray bytes = changes;
    if (sqlite3changeset_start(&rows, static_cast<int>(bytes.size()), bytes.data()) != SQLITE_OK)
        return false;
    const char* table = nullptr;
    int columns = 0, operation = 0, indirect = 0;
    const bool isUpdate = sqlite3changeset_next(rows) == SQLITE_ROW &&
                          sqlite3changeset_op(rows, &table, &columns, &operation, &indirect) == SQLITE_OK &&
                          operation == SQLITE_UPDATE;
    const bool isOne = isUpdate && sqlite3changeset_next(rows) == SQLITE_DONE;
    sqlite3changeset_finalize(rows);
    return isOne;
}

bool ChangeRecorder::apply(const QByteArray& changes, Direction direction) {
    if (schemaVersion() != m_schema)
        return false;
    QByteArray forward = changes;
    Buffer inverse(nullptr, sqlite3_free);
    void* bytes = forward.data();
    int size = static_cast<int>(forward.size());
    int code = SQLITE_OK;
    if (direction == Direction::Backward) {
        code = sqlite3changeset_invert(size, forward.constData(), &size, &bytes);
        inverse.reset(code == SQLITE_OK ? bytes : nullptr);
    }
    bool conflict = false;
    if (code == SQLITE_OK) {
        sqlite3session_enable(m_session, 0);
        code = sqlite3changeset_apply(m_connection.m_database, size, bytes, nullptr, stop, &conflict);
        sqlite3session_enable(m_session, 1);
    }
    if (code != SQLITE_OK && !conflict)
        throw sqliteError(m_connection.m_database, code);
    return !conflict;
}
