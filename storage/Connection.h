#pragma once

#include <QString>
#include <functional>
#include <memory>

#include "storage/Recordset.h"
#include "storage/Sql.h"

struct sqlite3;
class Lookups;

/// An open database file.
///
/// Owned by whoever opened it; closes itself when it goes. Used on one thread only. Every failure throws Error with
/// SQLite's number and a description for the user, and every call is checked.
///
/// A file is only data: views in it are not read, triggers in it do not act (temporary ones do), rows of more than 64
/// MB are not read, and a statement that would never end on a damaged or hostile file is stopped and fails.
///
/// What a failed command has left uncommitted is committed when the user's event is over and when the connection
/// closes; a commit that fails is recorded and tried again at the next event.
class Connection {
public:
    /// Open mode 6: read and write, created when missing.
    static constexpr int readWriteCreate = 6;

    Connection();
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Opens the file at `path` (read-only when it is write-protected). An empty `password` means a plain file, any
    /// other the SQLCipher 4 format. The first page is read at once: a wrong password, a file that is no database, a
    /// folder or a missing folder throws here. `mode` holds SQLite's open flags.
    void Open(const QString& path, const QString& password, int mode);

    /// Commits what is still open and closes the file. Does nothing when it is closed.
    void Close();

    /// Runs a query of exactly one statement. The recordset stands on the first row and must not outlive the
    /// connection's being open.
    Recordset OpenRecordset(const SqlText& statement);

    /// Runs exactly one statement that returns no rows and gives the number of rows that it changed itself: 0 for one
    /// that changes none.
    qint64 Execute(const SqlText& statement);

    /// As Execute(), for a procedure that writes what the user asked for outside a savepoint: alone in a transaction
    /// that begins with prepareToWrite().
    void Write(const SqlText& statement);

    /// Asks `beforeWriting`, in a transaction in which nobody else can write any more. A procedure that writes in a
    /// savepoint calls it first in there.
    void prepareToWrite();

    /// Called before something is written that the user asked for. What it throws keeps that from being written.
    std::function<void()> beforeWriting;

    /// 1 when the connection is open, else 0.
    [[nodiscard]] int State() const;

    /// Row id of the last row inserted on this connection.
    qint64 LastInsertId() const;

    /// Reads everything from the file again, where another file may have been laid over it.
    void forgetPages();

    /// Whether something is not committed yet.
    bool isInTransaction() const;

    /// While it lives, a file that another program has locked is not waited for.
    class WithoutWaiting {
    public:
        explicit WithoutWaiting(Connection& connection);
        ~WithoutWaiting();
        WithoutWaiting(const WithoutWaiting&) = delete;
        WithoutWaiting& operator=(const WithoutWaiting&) = delete;

    private:
        sqlite3* m_database;
        int m_before = 0;
    };

    /// What narrows statements on a library to the rows concerned.
    Lookups& lookups() { return *m_lookups; }

    /// Full path given to Open.
    const QString& path() const { return m_path; }

    /// Commits what is still open, for instance below a savepoint that was never released. Throws when it cannot be
    /// committed now; nothing is lost then.
    void commitLeftovers();

private:
    friend class ChangeRecorder;

    void commitWhenEventIsOver();
    /// Whether a statement that goes on without end is stopped.
    void watchStatements(bool on);

    QString m_path;
    sqlite3* m_database = nullptr;
    bool m_commitFailed = false;
    class Watch;
    std::unique_ptr<Watch> m_watch;
    class Leftovers;
    std::unique_ptr<Leftovers> m_leftovers;
    std::unique_ptr<Lookups> m_lookups;
};
