#pragma once

#include <QByteArray>
#include <memory>

class Connection;
struct sqlite3_session;

/// Records what is changed in the tables of a library through one connection, so that it can be taken back.
///
/// A record is one of SQLite's changesets: the rows that were added, removed or changed, with their values before and
/// after. What is rolled back is in no record. Only the library's own file is recorded, and of it only the tables; the
/// counters of row ids stay where they are.
class ChangeRecorder {
public:
    /// Records from now on. `connection` must be open, and stay so for as long as the recorder lives. Throws Error.
    explicit ChangeRecorder(Connection& connection);
    ~ChangeRecorder();
    ChangeRecorder(const ChangeRecorder&) = delete;
    ChangeRecorder& operator=(const ChangeRecorder&) = delete;

    /// Records anew from now on, what was not taken is forgotten. Throws Error.
    void begin();
    /// Whether the tables are others than when recording began.
    bool hasOtherTables() const { return schemaVersion() != m_schema; }

    /// Whether anything may have changed since take().
    bool hasChanges() const;
    /// What has changed since the last call, empty for nothing; recording begins anew. Throws Error.
    QByteArray take();

    /// What kind of changes a record holds.
    enum class Extent {
        NothingSeen,  ///< the time of the last change, or a missing text that is empty now
        OneRow,       ///< texts of one row, which was there before and after
        ManyRows,     ///< anything else
    };
    Extent extentOf(const QByteArray& changes) const;

    enum class Direction { Backward, Forward };
    /// Takes what `changes` says back, or does it once more, within the open transaction, unrecorded. False when a row
    /// is not as the record needs it; the transaction is to be rolled back then. Throws Error.
    [[nodiscard]] bool apply(const QByteArray& changes, Direction direction);

private:
    qint64 schemaVersion() const;
    int timeStampOf(const char* table) const;

    Connection& m_connection;
    struct End {
        void operator()(sqlite3_session* session) const;
    };
    std::unique_ptr<sqlite3_session, End> m_session;
    /// A table that looks different now would be passed over in silence.
    qint64 m_schema = 0;
};
