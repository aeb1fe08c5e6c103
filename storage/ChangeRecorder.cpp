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

/// Any row that is not as it was recorded ends the whole, and so does one that the file does not take.
int stop(void* conflict, int kind, sqlite3_changeset_iter*) {
    *static_cast<int*>(conflict) = kind;
    return SQLITE_CHANGESET_ABORT;
}

/// A missing text looks like an empty one.
bool isEmpty(sqlite3_value* value) { return sqlite3_value_bytes(value) == 0; }

}  // namespace

ChangeRecorder::ChangeRecorder(Connection& connection) : m_connection(connection) { begin(); }

ChangeRecorder::~ChangeRecorder() = default;

void ChangeRecorder::End::operator()(sqlite3_session* session) const { sqlite3session_delete(session); }

qint64 ChangeRecorder::schemaVersion() const {
    return m_connection.OpenRecordset("PRAGMA main.schema_version;").number("schema_version");
}

void ChangeRecorder::begin() {
    m_schema = schemaVersion();
    // Two at a time would both record.
    m_session.reset();
    sqlite3_session* session = nullptr;
    int code = sqlite3session_create(m_connection.m_database, "main", &session);
    m_session.reset(session);
    int withoutKey = 1;
    if (code == SQLITE_OK)
        code = sqlite3session_object_config(session, SQLITE_SESSION_OBJCONFIG_ROWID, &withoutKey);
    if (code == SQLITE_OK)
        code = sqlite3session_attach(session, nullptr);
    if (code != SQLITE_OK) {
        m_session.reset();
        throw sqliteError(nullptr, code);
    }
    sqlite3session_table_filter(session, isRecorded, nullptr);
}

bool ChangeRecorder::hasChanges() const { return m_session && sqlite3session_isempty(m_session.get()) == 0; }

QByteArray ChangeRecorder::take() {
    if (!hasChanges())
        return {};
    int size = 0;
    void* bytes = nullptr;
    const int code = sqlite3session_changeset(m_session.get(), &size, &bytes);
    const Buffer changes(bytes, sqlite3_free);
    begin();
    if (code != SQLITE_OK)
        throw sqliteError(nullptr, code);
    return QByteArray(static_cast<const char*>(bytes), size);
}

/// Number of the column that says when a row was last changed.
int ChangeRecorder::timeStampOf(const char* table) const {
    Recordset columns = m_connection.OpenRecordset(sql("PRAGMA main.table_info(", QString::fromUtf8(table), ");"));
    for (; !columns.EndOfFile(); columns.MoveNext())
        if (columns.text("name").compare(QLatin1String("LastUpdate"), Qt::CaseInsensitive) == 0)
            return static_cast<int>(columns.number("cid"));
    return -1;
}

ChangeRecorder::Extent ChangeRecorder::extentOf(const QByteArray& changes) const {
    if (changes.isEmpty())
        return Extent::NothingSeen;
    QByteArray bytes = changes;
    sqlite3_changeset_iter* rows = nullptr;
    if (sqlite3changeset_start(&rows, static_cast<int>(bytes.size()), bytes.data()) != SQLITE_OK)
        return Extent::ManyRows;
    const std::unique_ptr<sqlite3_changeset_iter, int (*)(sqlite3_changeset_iter*)> closing(rows,
                                                                                            sqlite3changeset_finalize);
    int count = 0;
    bool nothingSeen = true, standsForItself = true;
    while (sqlite3changeset_next(rows) == SQLITE_ROW) {
        const char* table = nullptr;
        int columns = 0, operation = 0, indirect = 0;
        sqlite3changeset_op(rows, &table, &columns, &operation, &indirect);
        if (operation != SQLITE_UPDATE || (++count > 1 && !nothingSeen))
            return Extent::ManyRows;
        const int timeStamp = timeStampOf(table);
        // Rows of one second-level content have its text in common.
        standsForItself = standsForItself && sqlite3_stricmp(table, "tblContDe") != 0;
        for (int column = 0; column < columns; ++column) {
            sqlite3_value *before = nullptr, *after = nullptr;
            sqlite3changeset_old(rows, column, &before);
            sqlite3changeset_new(rows, column, &after);
            const bool isSeen = after && column != timeStamp && !(isEmpty(before) && isEmpty(after));
            nothingSeen = nothingSeen && !isSeen;
        }
    }
    return nothingSeen ? Extent::NothingSeen : count == 1 && standsForItself ? Extent::OneRow : Extent::ManyRows;
}

bool ChangeRecorder::apply(const QByteArray& changes, Direction direction) {
    if (hasOtherTables() || !m_session)
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
    int conflict = 0;
    if (code == SQLITE_OK) {
        sqlite3session_enable(m_session.get(), 0);
        // Its rows are counted, so that it ends by itself; to the watch they would be one statement.
        m_connection.watchStatements(false);
        code = sqlite3changeset_apply(m_connection.m_database, size, bytes, nullptr, stop, &conflict);
        m_connection.watchStatements(true);
        sqlite3session_enable(m_session.get(), 1);
    }
    if (conflict == SQLITE_CHANGESET_CONSTRAINT)
        throw sqliteError(nullptr, SQLITE_CONSTRAINT);
    if (conflict == 0 && code != SQLITE_OK)
        throw sqliteError(m_connection.m_database, code);
    return conflict == 0;
}
