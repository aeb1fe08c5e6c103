#include "storage/Lookups.h"

#include <sqlite3.h>

#include <QStringList>
#include <algorithm>
#include <limits>

#include "app/base/Guarded.h"
#include "storage/Connection.h"

using namespace Qt::StringLiterals;

namespace {

/// Some ten milliseconds' worth.
constexpr int rowsPerSlice = 20'000;
/// How long a file that is locked, or in the middle of a command, is left alone.
constexpr int pauseMs = 200;
/// How often in a row filling may fail before it is given up: a damaged table can never be read.
constexpr int mostFailures = 50;

SqlText within(LookupBy by, const SqlText& condition) {
    return sql(" AND _rowid_ IN (SELECT row FROM ", LookupTables::nameOf(by), " WHERE ", condition, ")");
}

/// The one number that a query gives, 0 when it gives none.
qint64 number(Connection& connection, const SqlText& query, const char* column) {
    const Recordset row = connection.OpenRecordset(query);
    return row.EndOfFile() ? 0 : row.number(column);
}

}  // namespace

Lookups::Lookups(Connection& connection) : m_connection(connection) {
    QObject::connect(&m_idle, &QTimer::timeout, &m_idle, [this] { fillWhileIdle(); });
#ifndef NDEBUG
    QObject::connect(&UserEvent::instance(), &UserEvent::over, &m_idle, [this] { checkInDebugBuilds(); });
#endif
}

SqlText Lookups::narrow(LookupBy by, const SqlText& condition) {
    const bool complete = m_tables[LookupTables::tableOf(by)].state == State::Complete && isUpToDate();
    return complete ? within(by, condition) : SqlText("");
}

Lookups::Some Lookups::some(LookupBy by, const SqlText& all) {
    const std::size_t table = LookupTables::tableOf(by);
    if (m_tables[table].state == State::Complete && isUpToDate())
        return {by, true};
    bool usable = false;
    if (m_connection.State() == 1 && all.brokenAt().isEmpty()) {
        unlessLocked([&] {
            if (!isMade(table))
                return;
            m_connection.Execute(sql("INSERT OR IGNORE INTO ", LookupTables::nameOf(by), " ",
                                     LookupTables::contents(by), " AND ", all, ";"));
            usable = true;
        });
    }
    return {by, usable};
}

SqlText Lookups::Some::narrow(const SqlText& condition) const {
    return m_usable ? within(m_by, condition) : SqlText("");
}

/// Whether `act` came through: not when another program has locked the file, for which the statement that would have
/// been narrowed waits. Any other error is thrown, because it may have undone the whole transaction.
bool Lookups::unlessLocked(const std::function<void()>& act) {
    const Connection::WithoutWaiting quiet(m_connection);
    return succeedsUnless(SQLITE_BUSY, act);
}

/// Whether nobody else has written since the look-ups were begun; they are begun anew otherwise. A file that is locked
/// cannot be asked, so nothing is known to be up to date.
bool Lookups::isUpToDate() {
    qint64 version = 0, schema = 0;
    const bool known = unlessLocked([&] {
        version = number(m_connection, "PRAGMA main.data_version;", "data_version");
        if (version != m_version)
            schema = number(m_connection, "PRAGMA main.schema_version;", "schema_version");
    });
    if (!known || version == m_version)
        return known;
    for (Table& table : m_tables)
        table.state = table.state == State::Unmade || schema != m_schema ? State::Unmade
                      : table.state == State::Unusable                   ? State::Unusable
                                                                         : State::Empty;
    m_version = version;
    m_schema = schema;
    if (m_fillsWhenIdle)
        m_idle.start(0);
    return false;
}

bool Lookups::isMade(std::size_t table) {
    State& state = m_tables[table].state;
    // What is made within a transaction would go with its roll-back.
    if (state == State::Unmade && !m_connection.isInTransaction())
        state = LookupTables::make(m_connection, table) ? State::Empty : State::Unusable;
    return state != State::Unmade && state != State::Unusable;
}

bool Lookups::fillSlice() {
    // What is filled within a transaction would go with its roll-back.
    if (m_connection.isInTransaction())
        return false;
    const Connection::WithoutWaiting quiet(m_connection);
    isUpToDate();
    for (std::size_t table = 0; table < m_tables.size(); ++table) {
        if (m_tables[table].state == State::Complete || !isMade(table))
            continue;
        fillNext(table);
        return !areComplete();
    }
    return false;
}

void Lookups::fillNext(std::size_t table) {
    Table& filled = m_tables[table];
    const std::vector<LookupBy> lookups = LookupTables::lookupsOf(table);
    if (filled.state == State::Empty) {
        for (const LookupBy by : lookups)
            m_connection.Execute(sql("DELETE FROM ", LookupTables::nameOf(by), ";"));
        filled = {State::Filling, std::numeric_limits<qint64>::min()};
    }
    Recordset slice = m_connection.OpenRecordset(
        sql("SELECT count(*) AS n,max(_rowid_) AS last FROM (SELECT _rowid_ FROM main.", LookupTables::tableName(table),
            " WHERE _rowid_>", filled.upTo, " ORDER BY _rowid_ LIMIT ", rowsPerSlice, ");"));
    const qint64 rows = slice.number("n");
    const qint64 last = slice.number("last");
    slice.Close();
    // The triggers act already: what they have added stays as it is.
    for (const LookupBy by : rows > 0 ? lookups : std::vector<LookupBy>())
        m_connection.Execute(sql("INSERT OR IGNORE INTO ", LookupTables::nameOf(by), " ", LookupTables::contents(by),
                                 " AND row>", filled.upTo, " AND row<=", last, ";"));
    if (rows < rowsPerSlice)
        filled.state = State::Complete;
    else
        filled.upTo = last;
}

bool Lookups::areComplete() const {
    return std::all_of(m_tables.begin(), m_tables.end(), [](const Table& table) {
        return table.state == State::Complete || table.state == State::Unusable;
    });
}

void Lookups::fillWhenIdle() {
    m_fillsWhenIdle = true;
    m_idle.start(0);
}

void Lookups::forget() {
    m_version = 0;
    if (m_fillsWhenIdle)
        m_idle.start(0);
}

void Lookups::fillWhileIdle() {
    bool more = false;
    // Nothing is wrong for the user when a look-up cannot be filled, so nothing is said: a locked file is tried again.
    const bool filled = succeeds([&] { more = fillSlice(); });
    m_failures = filled ? 0 : m_failures + 1;
    if (more)
        m_idle.start(0);
    else if (areComplete())
        m_idle.stop();
    else if (m_failures < mostFailures)
        m_idle.start(pauseMs);
    else
        m_idle.stop();
}

#ifndef NDEBUG
void Lookups::checkInDebugBuilds() {
    QString found;
    bool whole = false;
    // A file that cannot be read, or whose pages contradict each other, proves nothing.
    const bool read = succeeds([&] {
        // In one transaction: another program may write while the two are compared.
        const bool alone = !m_connection.isInTransaction();
        if (alone)
            m_connection.Execute("BEGIN;");
        found = difference();
        if (alone)
            m_connection.Execute("COMMIT;");
        whole =
            found.isEmpty() || m_connection.OpenRecordset("PRAGMA main.quick_check(1);").text("quick_check") == u"ok"_s;
    });
    if (read && whole && !found.isEmpty())
        qFatal("look-ups are wrong: %s", qPrintable(found));
}
#endif

QString Lookups::difference() {
    QStringList found;
    for (std::size_t table = 0; table < m_tables.size(); ++table) {
        if (m_tables[table].state != State::Complete || !isUpToDate())
            continue;
        for (const LookupBy by : LookupTables::lookupsOf(table)) {
            const SqlText wanted = sql("(", LookupTables::contents(by), ") AS c");
            const SqlText held = sql(LookupTables::nameOf(by), " AS l");
            // A damaged file may hold a text in a number's column that looks like a number: the look-up has the number.
            const SqlText other = " WHERE l.key=+c.key AND l.row=c.row)";
            for (const SqlText& query :
                 {sql("SELECT key,row FROM ", wanted, " WHERE NOT EXISTS (SELECT 1 FROM ", held, other),
                  sql("SELECT key,row FROM ", held, " WHERE NOT EXISTS (SELECT 1 FROM ", wanted, other)})
                if (const Recordset row = m_connection.OpenRecordset(query); !row.EndOfFile())
                    found << LookupTables::nameOf(by).text() + u": "_s + row.joined(u"|"_s);
        }
    }
    return found.join(u'\n');
}
