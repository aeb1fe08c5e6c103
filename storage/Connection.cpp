#include "storage/Connection.h"

#include <sqlite3.h>

#include <chrono>

#include "app/base/Guarded.h"
#include "app/platform/Platform.h"
#include "storage/KeyedAccess.h"
#include "storage/Lookups.h"
#include "storage/SqliteError.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int busyTimeoutMs = 2000;

/// Far more than any text of a library. One row that claims to be longer would take all memory.
constexpr int longestRow = 64 << 20;

struct StatementCloser {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using StatementPointer = std::unique_ptr<sqlite3_stmt, StatementCloser>;

StatementPointer prepare(sqlite3* database, const char* text, const char** tail) {
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v2(database, text, -1, &statement, tail);
    if (code != SQLITE_OK)
        throw sqliteError(database, code);
    return StatementPointer(statement);
}

bool blankOrSemicolon(char c) { return c == ';' || c == ' ' || (c >= '\t' && c <= '\r'); }

/// Prepares the one statement in `statement`; blanks, comments and semicolons may follow it.
StatementPointer prepareOne(sqlite3* database, const SqlText& statement) {
    if (!database)
        throw noConnectionError();
    if (!statement.brokenAt().isEmpty())
        throw brokenValueError(statement.brokenAt());
    const QByteArray text = statement.text().toUtf8();
    const char* tail = nullptr;
    StatementPointer first = prepare(database, text.constData(), &tail);
    if (!first)
        throw statementError(u"no statement"_s);
    while (tail && *tail) {
        while (blankOrSemicolon(*tail))
            ++tail;
        const char* rest = tail;
        if (*rest && prepare(database, rest, &tail))
            throw statementError(u"near \"%1\": syntax error"_s.arg(QString::fromUtf8(rest).left(40)));
    }
    return first;
}

void run(sqlite3* database, const char* text) {
    const int code = sqlite3_exec(database, text, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        throw sqliteError(database, code);
}

}  // namespace

/// Stops a statement that would never end: SQLite calls back after every thousand steps of its machine, and a statement
/// with too many calls, or a minute old, is interrupted. What this program asks is far cheaper, even in a library of
/// national size; only a damaged or hostile file (pages that lead back to themselves) asks for more.
class Connection::Watch {
public:
    explicit Watch(sqlite3* database) : m_database(database) { set(true); }

    void set(bool on) { sqlite3_progress_handler(m_database, on ? instructionsPerCall : 0, isTooLong, this); }

    void statementBegins() {
        m_calls = 0;
        m_begin = Clock::now();
    }

private:
    using Clock = std::chrono::steady_clock;
    static constexpr int instructionsPerCall = 1000;
    static constexpr int mostCalls = 50'000;
    static constexpr std::chrono::minutes longest{1};

    static int isTooLong(void* watch) {
        auto* self = static_cast<Watch*>(watch);
        return ++self->m_calls > mostCalls || Clock::now() - self->m_begin > longest;
    }

    sqlite3* m_database;
    int m_calls = 0;
    Clock::time_point m_begin = Clock::now();
};

/// Commits at the end of the user's event whatever is still open then.
class Connection::Leftovers {
public:
    explicit Leftovers(Connection* connection)
        : m_link(QObject::connect(&UserEvent::instance(), &UserEvent::over, &UserEvent::instance(),
                                  [connection] { connection->commitWhenEventIsOver(); })) {}
    ~Leftovers() { QObject::disconnect(m_link); }
    Leftovers(const Leftovers&) = delete;
    Leftovers& operator=(const Leftovers&) = delete;

private:
    QMetaObject::Connection m_link;
};

Connection::Connection() : m_lookups(std::make_unique<Lookups>(*this)) {}

Connection::~Connection() {
    guarded({"Connection", "Close"}, [this] { Close(); });
    sqlite3_close_v2(m_database);
}

void Connection::Open(const QString& path, const QString& password, int mode) {
    Close();
    if (const QString objection = platform::objectionTo(path); !objection.isEmpty())
        throw Error(SQLITE_CANTOPEN, objection);
    sqlite3* database = nullptr;
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &database, mode, nullptr);
    std::unique_ptr<sqlite3, int (*)(sqlite3*)> opened(database, sqlite3_close_v2);
    if (code != SQLITE_OK)
        throw sqliteError(database, code);
    sqlite3_busy_timeout(database, busyTimeoutMs);
    // A library is data: nothing that a foreign file holds beside its tables may act. A view in place of a table could
    // be endless, a trigger could write what nobody asked for. Temporary triggers, which no file holds, still work.
    sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_limit(database, SQLITE_LIMIT_LENGTH, longestRow);
    run(database, "PRAGMA cell_size_check=ON");
    // The SQLCipher 4 format takes both, and before any key. They also hold for files attached later.
    run(database, "PRAGMA cipher='sqlcipher'");
    run(database, "PRAGMA legacy=4");
    if (!password.isEmpty()) {
        const QByteArray key = keyForFile(path, password);
        const int keyed = sqlite3_key(database, key.constData(), static_cast<int>(key.size()));
        if (keyed != SQLITE_OK)
            throw sqliteError(database, keyed);
    }
    run(database, "PRAGMA schema_version");
    // A cache of 64 MB, so that repeated passes over the same tables stay in memory. It is taken only as it is filled.
    run(database, "PRAGMA cache_size=-65536");
    // A journal that is deleted but comes back when the power goes would take back what was shown as done: its folder
    // is synced too.
    run(database, "PRAGMA synchronous=EXTRA");
    // A full temporary disk can then neither fail a temporary table half-way nor keep it from going.
    run(database, "PRAGMA temp_store=MEMORY");

    m_database = opened.release();
    m_path = path;
    m_watch = std::make_unique<Watch>(m_database);
    m_leftovers = std::make_unique<Leftovers>(this);
}

void Connection::Close() {
    if (!m_database)
        return;
    commitLeftovers();
    m_leftovers.reset();
    m_lookups = std::make_unique<Lookups>(*this);
    sqlite3_close_v2(m_database);
    m_database = nullptr;
}

Recordset Connection::OpenRecordset(const SqlText& statement) {
    StatementPointer prepared = prepareOne(m_database, statement);
    m_watch->statementBegins();
    return Recordset(m_database, prepared.release());
}

qint64 Connection::Execute(const SqlText& statement) {
    const StatementPointer prepared = prepareOne(m_database, statement);
    m_watch->statementBegins();
    const sqlite3_int64 before = sqlite3_total_changes64(m_database);
    int code = SQLITE_ROW;
    while (code == SQLITE_ROW)
        code = sqlite3_step(prepared.get());
    if (code != SQLITE_DONE)
        throw sqliteError(m_database, code);
    // After CREATE, SAVEPOINT and the like sqlite3_changes still tells of the statement before.
    return sqlite3_total_changes64(m_database) == before ? 0 : sqlite3_changes64(m_database);
}

void Connection::Write(const SqlText& statement) {
    if (!beforeWriting || isInTransaction()) {
        prepareToWrite();
        Execute(statement);
        return;
    }
    // A statement that cannot be prepared fails as it would by itself: before anything else is done.
    prepareOne(m_database, statement);
    run(m_database, "BEGIN");
    try {
        prepareToWrite();
        Execute(statement);
        run(m_database, "COMMIT");
    } catch (...) {
        // SQLite has rolled back by itself after some errors.
        if (isInTransaction())
            run(m_database, "ROLLBACK");
        throw;
    }
}

void Connection::prepareToWrite() {
    if (!beforeWriting)
        return;
    // Changes nothing, but takes the lock for writing, and waits for it. A foreign file may lack the table.
    succeedsUnless(SQLITE_ERROR, [this] { run(m_database, "DELETE FROM main.tblSyb WHERE 0"); });
    beforeWriting();
}

void Connection::watchStatements(bool on) { m_watch->set(on); }

int Connection::State() const { return m_database ? 1 : 0; }

qint64 Connection::LastInsertId() const { return m_database ? sqlite3_last_insert_rowid(m_database) : 0; }

void Connection::forgetPages() {
    sqlite3_db_release_memory(m_database);
    m_lookups->forget();
}

bool Connection::isInTransaction() const { return m_database && !sqlite3_get_autocommit(m_database); }

Connection::WithoutWaiting::WithoutWaiting(Connection& connection) : m_database(connection.m_database) {
    const StatementPointer timeout = prepare(m_database, "PRAGMA busy_timeout", nullptr);
    if (sqlite3_step(timeout.get()) == SQLITE_ROW)
        m_before = sqlite3_column_int(timeout.get(), 0);
    sqlite3_busy_timeout(m_database, 0);
}

Connection::WithoutWaiting::~WithoutWaiting() { sqlite3_busy_timeout(m_database, m_before); }

void Connection::commitLeftovers() {
    if (isInTransaction())
        run(m_database, "COMMIT");
}

void Connection::commitWhenEventIsOver() {
    if (!isInTransaction())
        return;
    if (m_commitFailed) {
        // Reported once; from then on tried quietly until it succeeds.
        const WithoutWaiting quiet(*this);
        m_commitFailed = sqlite3_exec(m_database, "COMMIT", nullptr, nullptr, nullptr) != SQLITE_OK;
        return;
    }
    m_commitFailed = true;
    guarded({"Connection", "Commit"}, [this] {
        commitLeftovers();
        m_commitFailed = false;
    });
}
