#include "tests/support/FaultyDisk.h"

#include <sqlite3.h>

#include <csignal>

namespace {

struct Disk : FaultyDisk::Counts {
    FaultyDisk::Fault fault;
    std::int64_t changesTold = 0;
};
Disk disk;
std::vector<FaultyDisk::Change>* record = nullptr;
std::function<void()> whenChanged;

/// Counts an operation and tells whether it is to fail or to be the last one.
bool strikes(unsigned kind, bool grows = true) {
    const std::int64_t number = kind == FaultyDisk::Read ? ++disk.reads : ++disk.changes;
    const FaultyDisk::Fault& fault = disk.fault;
    if (fault.at == 0 || number < fault.at || !(fault.kinds & kind) || (fault.onlyGrowth && !grows))
        return false;
    if (!fault.lasting && disk.failures > 0)
        return false;
    ++disk.failures;
    return true;
}

int failure(int ofThisKind) {
    if (disk.fault.endsProcess)
        std::raise(SIGKILL);
    return disk.fault.full ? SQLITE_FULL : ofThisKind;
}

int recorded(int code, const FaultyDisk::Change& change) {
    if (record && code == SQLITE_OK)
        record->push_back(change);
    return code;
}

/// An open file: a few of its methods are ours and call those that it had.
struct File {
    std::string name;
    const sqlite3_io_methods* methods;
    sqlite3_io_methods ours;
};
std::map<sqlite3_file*, File> files;

int readFile(sqlite3_file* file, void* data, int size, sqlite3_int64 offset) {
    if (strikes(FaultyDisk::Read))
        return failure(SQLITE_IOERR_READ);
    return files.at(file).methods->xRead(file, data, size, offset);
}

int writeFile(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset) {
    const File& opened = files.at(file);
    sqlite3_int64 length = 0;
    if (disk.fault.onlyGrowth)
        opened.methods->xFileSize(file, &length);
    if (strikes(FaultyDisk::Write, offset + size > length)) {
        if (disk.fault.halfWritten)
            opened.methods->xWrite(file, data, size / 2, offset);
        return failure(SQLITE_IOERR_WRITE);
    }
    const QByteArray bytes(static_cast<const char*>(data), record ? size : 0);
    return recorded(opened.methods->xWrite(file, data, size, offset),
                    {FaultyDisk::Write, opened.name, offset, bytes, false});
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size) {
    const File& opened = files.at(file);
    if (strikes(FaultyDisk::Truncate))
        return failure(SQLITE_IOERR_TRUNCATE);
    return recorded(opened.methods->xTruncate(file, size), {FaultyDisk::Truncate, opened.name, size, {}, false});
}

/// Not carried out: what the system has been given outlives the process.
int syncFile(sqlite3_file* file, int) {
    if (strikes(FaultyDisk::Sync))
        return failure(SQLITE_IOERR_FSYNC);
    return recorded(SQLITE_OK, {FaultyDisk::Sync, files.at(file).name, 0, {}, false});
}

int unlockFile(sqlite3_file* file, int level) {
    const int code = files.at(file).methods->xUnlock(file, level);
    if (level == SQLITE_LOCK_NONE && disk.changes > disk.changesTold && whenChanged) {
        disk.changesTold = disk.changes;
        whenChanged();
    }
    return code;
}

int closeFile(sqlite3_file* file) { return files.extract(file).mapped().methods->xClose(file); }

sqlite3_vfs layer;
sqlite3_vfs* below = nullptr;

int openFile(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    const int code = below->xOpen(below, name, file, flags, outFlags);
    if (!file->pMethods)
        return code;
    File& opened = files[file] = {name ? name : "", file->pMethods, *file->pMethods};
    opened.ours.xClose = closeFile;
    opened.ours.xRead = readFile;
    opened.ours.xWrite = writeFile;
    opened.ours.xTruncate = truncateFile;
    opened.ours.xSync = syncFile;
    opened.ours.xUnlock = unlockFile;
    file->pMethods = &opened.ours;
    return code;
}

int deleteFile(sqlite3_vfs*, const char* name, int syncFolder) {
    if (strikes(FaultyDisk::Delete))
        return failure(SQLITE_IOERR_DELETE);
    return recorded(below->xDelete(below, name, syncFolder), {FaultyDisk::Delete, name, 0, {}, syncFolder != 0});
}

int sleepFor(sqlite3_vfs*, int microseconds) {
    disk.waited += microseconds / 1000;
    return microseconds;
}

}  // namespace

FaultyDisk::FaultyDisk() {
    relieve();
    below = sqlite3_vfs_find(nullptr);
    // A copy of the one below: what is not ours finds there whatever it looks for.
    layer = *below;
    layer.pNext = nullptr;
    layer.zName = "tessel-faulty-disk";
    layer.xOpen = openFile;
    layer.xDelete = deleteFile;
    layer.xSleep = sleepFor;
    sqlite3_vfs_register(&layer, 1);
}

FaultyDisk::~FaultyDisk() {
    ::record = nullptr;
    whenChanged({});
    sqlite3_vfs_register(below, 1);
    sqlite3_vfs_unregister(&layer);
}

const FaultyDisk::Counts& FaultyDisk::counts() { return disk; }
void FaultyDisk::set(const Fault& fault) { disk = {{}, fault}; }
void FaultyDisk::record(std::vector<Change>* changes) { ::record = changes; }
void FaultyDisk::whenChanged(std::function<void()> changed) { ::whenChanged = std::move(changed); }
