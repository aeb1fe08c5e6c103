#pragma once

#include "tests/support/Toolkit.h"

#include <cstdint>

/// The disk under every database file that is opened while it lives: it counts what happens to files and fails, or
/// ends the process, at an operation chosen beforehand. Nobody waits on it: syncs are not carried out, and the time
/// that a lock is waited for is only counted. All connections opened on it must be closed before it goes. There is one
/// at a time.
class FaultyDisk {
public:
    /// Kinds of operation, to be joined by |. All but reading change a file and are counted.
    enum Kind : unsigned { Write = 1, Truncate = 2, Sync = 4, Delete = 8, Changes = 15, Read = 16 };

    FaultyDisk();
    ~FaultyDisk();
    Q_DISABLE_COPY(FaultyDisk)

    /// What has happened since the disk was made or last set to a fault.
    struct Counts {
        std::int64_t changes = 0;   ///< of files, or tries: of libraries, journals and temporary files alike
        std::int64_t reads = 0;     ///< counted by themselves
        std::int64_t failures = 0;  ///< that a fault has caused
        std::int64_t waited = 0;    ///< milliseconds that locks would have been waited for
    };
    static const Counts& counts();

    /// What happens at the operation `at`, 1 for the next one, which counts changes, or reads when `kinds` is Read
    /// alone: it fails with an input/output error, unless something else is asked for.
    struct Fault {
        unsigned kinds = 0;        ///< that fail: the first one at or after `at`
        std::int64_t at = 0;       ///< 0: nothing fails
        bool lasting = false;      ///< all from there on
        bool full = false;         ///< for want of room
        bool onlyGrowth = false;   ///< only writes that make a file longer, where old blocks are used again
        bool endsProcess = false;  ///< the process is killed before the operation,
        bool halfWritten = false;  ///< or after the first half of it, if it is a write
    };
    /// Starts the counts anew and replaces what was set before.
    void set(const Fault& fault);
    /// Everything works from now on.
    void relieve() { set({}); }

    struct Change {
        Kind kind;
        std::string file;
        std::int64_t at;  ///< where a write begins, and the size that a file is cut to
        QByteArray data;
        bool folderToo;  ///< of a deletion: it is on the disk when it has been carried out
    };
    /// Every change of a file that is carried out from now on, in their order, is added to `changes`.
    void record(std::vector<Change>* changes);
    /// Calls `changed` as soon as a file can be read again after something has been changed.
    void whenChanged(std::function<void()> changed);
};
