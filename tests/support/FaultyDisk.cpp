#include "tests/support/FaultyDisk.h"

#include <sqlite3.h>

#include <csignal>
#include <cstring>

namespace {

struct Fault {
    int code = SQLITE_OK;
    unsigned kinds = 0;
    std::int64_t at = 0;
    bool lasting = false;
    bool onlyGrowth = false;
    bool kill = false;
    bool halfWritten = false;
};

struct Disk {
    Fault fault;
    std::int64_t changes = 0;
    std::int64_t reads = 0;
    std::int64_t failures = 0;
};
Disk disk;
std::function<void()> whenChanged;
std::int64_t changesTold = 0;

void set(const Fault& fault) {
    disk = Disk();
    changesTold = 0;
    disk.fault = fault;
}

/// Counts an operation and tells whether it is to fail or to be the last one.
bool strikes(unsigned kind, bool grows = true) {
    const std::int64_t number = kind == FaultyDisk::Read ? ++disk.reads : ++disk.changes;
    const Fault& fault = disk.fault;
    if (fault.at == 0 || number < fault.at || !(fault.kinds & kind) || (fault.onlyGrowth && !grows))
        return false;
    if (!fault.lasting && disk.failures > 0)
        return false;
    ++disk.failures;
    return true;
}

int failure(int ofThisKind) {
    if (disk.fault.kill)
        std::raise(SIGKILL);
    return disk.fault.code == SQLITE_IOERR ? ofThisKind : disk.fault.code;
}

/// A file of ours: the real one follows it in memory.
struct File {
    sqlite3_file base;
    sqlite3_file* real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

File* ours(sqlite3_file* file) { return reinterpret_cast<File*>(file); }
sqlite3_file* real(sqlite3_file* file) { return ours(file)->real(); }
sqlite3_vfs* real(sqlite3_vfs* vfs) { return static_cast<sqlite3_vfs*>(vfs->pAppData); }

int readFile(sqlite3_file* file, void* data, int size, sqlite3_int64 offset) {
    if (strikes(FaultyDisk::Read))
        return failure(SQLITE_IOERR_READ);
    return real(file)->pMethods->xRead(real(file), data, size, offset);
}

int writeFile(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset) {
    const sqlite3_io_methods* methods = real(file)->pMethods;
    sqlite3_int64 length = 0;
    if (disk.fault.onlyGrowth)
        methods->xFileSize(real(file), &length);
    if (strikes(FaultyDisk::Write, offset + size > length)) {
        if (disk.fault.halfWritten)
            methods->xWrite(real(file), data, size / 2, offset);
        return failure(SQLITE_IOERR_WRITE);
    }
    return methods->xWrite(real(file), data, size, offset);
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size) {
    if (strikes(FaultyDisk::Truncate))
        return failure(SQLITE_IOERR_TRUNCATE);
    return real(file)->pMethods->xTruncate(real(file), size);
}

/// Not carried out: what the system has been given outlives the process.
int syncFile(sqlite3_file*, int) {
    if (strikes(FaultyDisk::Sync))
        return failure(SQLITE_IOERR_FSYNC);
    return SQLITE_OK;
}

int deleteFile(sqlite3_vfs* vfs, const char* name, int syncFolder) {
    if (strikes(FaultyDisk::Delete))
        return failure(SQLITE_IOERR_DELETE);
    return real(vfs)->xDelete(real(vfs), name, syncFolder);
}

// What only passes on.
template <auto method, typename... Arguments>
int pass(sqlite3_file* file, Arguments... arguments) {
    return (real(file)->pMethods->*method)(real(file), arguments...);
}
using Methods = sqlite3_io_methods;
int closeFile(sqlite3_file* file) { return pass<&Methods::xClose>(file); }
int fileSize(sqlite3_file* file, sqlite3_int64* size) { return pass<&Methods::xFileSize>(file, size); }
int lockFile(sqlite3_file* file, int level) { return pass<&Methods::xLock>(file, level); }
int unlockFile(sqlite3_file* file, int level) {
    const int code = pass<&Methods::xUnlock>(file, level);
    if (level == SQLITE_LOCK_NONE && disk.changes > changesTold && whenChanged) {
        changesTold = disk.changes;
        whenChanged();
    }
    return code;
}
int checkLock(sqlite3_file* file, int* result) { return pass<&Methods::xCheckReservedLock>(file, result); }
int control(sqlite3_file* file, int what, void* argument) { return pass<&Methods::xFileControl>(file, what, argument); }
int sectorSize(sqlite3_file* file) { return pass<&Methods::xSectorSize>(file); }
int characteristics(sqlite3_file* file) { return pass<&Methods::xDeviceCharacteristics>(file); }
int mapShared(sqlite3_file* file, int page, int size, int extend, void volatile** mapped) {
    return pass<&Methods::xShmMap>(file, page, size, extend, mapped);
}
int lockShared(sqlite3_file* file, int offset, int count, int flags) {
    return pass<&Methods::xShmLock>(file, offset, count, flags);
}
void orderShared(sqlite3_file* file) { real(file)->pMethods->xShmBarrier(real(file)); }
int unmapShared(sqlite3_file* file, int remove) { return pass<&Methods::xShmUnmap>(file, remove); }

const sqlite3_io_methods methods = [] {
    sqlite3_io_methods m{};
    m.iVersion = 2;
    m.xClose = closeFile;
    m.xRead = readFile;
    m.xWrite = writeFile;
    m.xTruncate = truncateFile;
    m.xSync = syncFile;
    m.xFileSize = fileSize;
    m.xLock = lockFile;
    m.xUnlock = unlockFile;
    m.xCheckReservedLock = checkLock;
    m.xFileControl = control;
    m.xSectorSize = sectorSize;
    m.xDeviceCharacteristics = characteristics;
    m.xShmMap = mapShared;
    m.xShmLock = lockShared;
    m.xShmBarrier = orderShared;
    m.xShmUnmap = unmapShared;
    return m;
}();

int openFile(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    const int code = real(vfs)->xOpen(real(vfs), name, real(file), flags, outFlags);
    file->pMethods = real(file)->pMethods ? &methods : nullptr;
    return code;
}

sqlite3_vfs layer;

}  // namespace

FaultyDisk::FaultyDisk() : m_previous(sqlite3_vfs_find(nullptr)) {
    relieve();
    // A copy of the one below: it hands on what it is asked, with the one below as the one that is meant.
    layer = *m_previous;
    layer.pNext = nullptr;
    layer.zName = "tessel-faulty-disk";
    layer.pAppData = m_previous;
    layer.szOsFile = static_cast<int>(sizeof(File)) + m_previous->szOsFile;
    layer.xOpen = openFile;
    layer.xDelete = deleteFile;
    layer.xAccess = [](sqlite3_vfs* vfs, const char* name, int flags, int* result) {
        return real(vfs)->xAccess(real(vfs), name, flags, result);
    };
    layer.xFullPathname = [](sqlite3_vfs* vfs, const char* name, int size, char* path) {
        return real(vfs)->xFullPathname(real(vfs), name, size, path);
    };
    layer.xRandomness = [](sqlite3_vfs* vfs, int size, char* data) {
        return real(vfs)->xRandomness(real(vfs), size, data);
    };
    layer.xSleep = [](sqlite3_vfs* vfs, int microseconds) { return real(vfs)->xSleep(real(vfs), microseconds); };
    layer.xCurrentTime = [](sqlite3_vfs* vfs, double* time) { return real(vfs)->xCurrentTime(real(vfs), time); };
    layer.xGetLastError = [](sqlite3_vfs* vfs, int size, char* text) {
        return real(vfs)->xGetLastError(real(vfs), size, text);
    };
    layer.iVersion = 1;
    sqlite3_vfs_register(&layer, 1);
}

FaultyDisk::~FaultyDisk() {
    whenChanged({});
    sqlite3_vfs_register(m_previous, 1);
    sqlite3_vfs_unregister(&layer);
}

std::int64_t FaultyDisk::operations() const { return disk.changes; }
std::int64_t FaultyDisk::reads() const { return disk.reads; }
std::int64_t FaultyDisk::failures() const { return disk.failures; }

void FaultyDisk::becomeFullAt(std::int64_t at, bool oldBlocksToo) {
    set({.code = SQLITE_FULL, .kinds = Write, .at = at, .lasting = true, .onlyGrowth = !oldBlocksToo});
}

void FaultyDisk::failAt(std::int64_t at, unsigned kinds, bool fromThenOn) {
    set({.code = SQLITE_IOERR, .kinds = kinds, .at = at, .lasting = fromThenOn});
}

void FaultyDisk::endProcessAt(std::int64_t at, bool halfWritten) {
    set({.kinds = Changes, .at = at, .lasting = true, .kill = true, .halfWritten = halfWritten});
}

void FaultyDisk::relieve() { set({}); }

void FaultyDisk::whenChanged(std::function<void()> changed) { ::whenChanged = std::move(changed); }
