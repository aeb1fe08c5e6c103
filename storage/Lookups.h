#pragma once

#include <QTimer>
#include <array>
#include <functional>

#include "storage/LookupTables.h"
#include "storage/Sql.h"

class Connection;

/// Which rows of a library hold what, so that a statement about one bill costs what the bill has, not what the library
/// has: a library has no index. They are known from look-ups in the temporary schema of the connection, which no file
/// ever holds.
///
/// A look-up narrows a statement that keeps its own condition, so it can change what a statement costs, not what it
/// does. It is filled while the window is idle; from then on it is complete, until another program writes to the file:
/// then it is emptied and filled again. A file whose tables cannot be looked up works without.
class Lookups {
public:
    explicit Lookups(Connection& connection);
    Lookups(const Lookups&) = delete;
    Lookups& operator=(const Lookups&) = delete;

    /// A further condition for the WHERE of a statement on the table of `by`: only rows whose column fulfils
    /// `condition`, in which the column is called "key". Empty while the look-up is not complete: the statement then
    /// passes over its table. Throws Error when the file cannot be read.
    SqlText narrow(LookupBy by, const SqlText& condition);

    /// The same for statements that follow one another at once and all concern rows whose column fulfils `all`. When
    /// the look-up is not complete, one pass over the table adds those rows, so that there is not one for each
    /// statement.
    class Some {
    public:
        SqlText narrow(const SqlText& condition) const;

    private:
        friend class Lookups;
        Some(LookupBy by, bool usable) : m_by(by), m_usable(usable) {}
        LookupBy m_by;
        bool m_usable;
    };
    Some some(LookupBy by, const SqlText& all);

    /// Fills what is not complete, a slice each time that the event loop has nothing else to do; from now on also after
    /// another program has written.
    void fillWhenIdle();
    /// Fills the next rows: a few milliseconds' worth. True when there are more, false when everything is complete or
    /// cannot be filled now. Throws Error.
    bool fillSlice();
    bool areComplete() const;
    /// Fills everything anew from now on.
    void forget();

    /// What a complete look-up says otherwise than its table; empty when there is nothing.
    QString difference();

private:
    enum class State { Unmade, Unusable, Empty, Filling, Complete };
    struct Table {
        State state = State::Unmade;
        qint64 upTo = 0;  ///< while filling: the last row id that is in
    };

    bool unlessLocked(const std::function<void()>& act);
    bool isUpToDate();
    bool isMade(std::size_t table);
    void fillNext(std::size_t table);
    void fillWhileIdle();
    void checkInDebugBuilds();

    Connection& m_connection;
    std::array<Table, LookupTables::count> m_tables;
    qint64 m_version = 0;  ///< SQLite's count of what others have written
    qint64 m_schema = 0;
    QTimer m_idle;
    bool m_fillsWhenIdle = false;
    int m_failures = 0;
};
