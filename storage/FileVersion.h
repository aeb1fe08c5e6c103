#pragma once

#include <QDateTime>
#include <QtGlobal>

class Connection;

/// Which state of its file a connection has shown, so that what another program writes later is noticed.
class FileVersion {
public:
    /// The state of the file now. Throws Error.
    explicit FileVersion(Connection& connection);

    /// What the file holds now is what is shown. False when the file is locked and cannot be read. Throws other Errors.
    [[nodiscard]] bool accept();
    /// The own writes are done: what the file looks like from outside is theirs.
    void acceptOwnWrites();

    /// Whether another program has written since accept(); a file that is locked cannot be asked, and counts as
    /// unchanged until it can. Throws other Errors.
    bool isChanged() const;
    /// Whether the file looks different from outside, though SQLite, which goes by a count in the file, sees no change:
    /// another file may have been laid over it. What is remembered of its pages is forgotten then.
    bool isTouched();

private:
    bool read(qint64& version) const;

    Connection& m_connection;
    qint64 m_version = 0;
    QDateTime m_written;
    qint64 m_size = 0;
};
