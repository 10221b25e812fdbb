#include "tests/support/FaultyFiles.h"

#include <QtGlobal>
#include <set>
#include <sqlite3.h>
#include <string>

namespace tallyroom {

namespace {

int counted = 0;
int failing = 0;
int loose = 0;
int microsecondsWaited = 0;
bool isFull = false;
std::set<std::string> leftBehind;
sqlite3_vfs* realVfs = nullptr;
sqlite3_vfs faultyVfs;
sqlite3_io_methods faultyMethods;

bool fails() {
    return ++counted == failing;
}

struct FaultyFile {
    sqlite3_file base;
    sqlite3_file* real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

sqlite3_file* real(sqlite3_file* file) {
    return reinterpret_cast<FaultyFile*>(file)->real();
}

int readFile(sqlite3_file* file, void* data, int size, sqlite3_int64 offset) {
    return fails() ? SQLITE_IOERR_READ
                   : real(file)->pMethods->xRead(real(file), data, size, offset);
}

int writeFile(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset) {
    if (isFull)
        return SQLITE_FULL;
    return fails() ? SQLITE_IOERR_WRITE
                   : real(file)->pMethods->xWrite(real(file), data, size, offset);
}

// No power cut comes, and a busy disk would make a sweep last for minutes.
int syncFile(sqlite3_file*, int) {
    return fails() ? SQLITE_IOERR_FSYNC : SQLITE_OK;
}

void setMethods() {
    faultyMethods = {};
    faultyMethods.iVersion = 1;
    faultyMethods.xRead = readFile;
    faultyMethods.xWrite = writeFile;
    faultyMethods.xSync = syncFile;
    faultyMethods.xClose = [](sqlite3_file* f) { return real(f)->pMethods->xClose(real(f)); };
    faultyMethods.xTruncate = [](sqlite3_file* f, sqlite3_int64 size) {
        return real(f)->pMethods->xTruncate(real(f), size);
    };
    faultyMethods.xFileSize = [](sqlite3_file* f, sqlite3_int64* size) {
        return real(f)->pMethods->xFileSize(real(f), size);
    };
    faultyMethods.xLock = [](sqlite3_file* f, int level) {
        return real(f)->pMethods->xLock(real(f), level);
    };
    faultyMethods.xUnlock = [](sqlite3_file* f, int level) {
        return real(f)->pMethods->xUnlock(real(f), level);
    };
    faultyMethods.xCheckReservedLock = [](sqlite3_file* f, int* result) {
        return real(f)->pMethods->xCheckReservedLock(real(f), result);
    };
    faultyMethods.xFileControl = [](sqlite3_file* f, int op, void* arg) {
        return real(f)->pMethods->xFileControl(real(f), op, arg);
    };
    faultyMethods.xSectorSize = [](sqlite3_file* f) {
        return real(f)->pMethods->xSectorSize(real(f));
    };
    faultyMethods.xDeviceCharacteristics = [](sqlite3_file* f) {
        return real(f)->pMethods->xDeviceCharacteristics(real(f));
    };
}

// A journal that was left behind is opened and not made. Should its removal be taken back, it would
// undo the same once more, and nothing that came later: that makes a journal of its own.
void noteJournal(const char* name, int flags) {
    if ((flags & SQLITE_OPEN_MAIN_JOURNAL) == 0)
        return;
    if ((flags & SQLITE_OPEN_CREATE) == 0)
        leftBehind.insert(name);
    else
        leftBehind.erase(name);
}

int openFile(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    file->pMethods = nullptr;
    noteJournal(name, flags);
    const int result = realVfs->xOpen(realVfs, name, real(file), flags, outFlags);
    if (result == SQLITE_OK)
        file->pMethods = &faultyMethods;
    return result;
}

int deleteFile(sqlite3_vfs*, const char* name, int syncFolder) {
    loose += syncFolder == 0 && !leftBehind.contains(name) ? 1 : 0;
    return fails() ? SQLITE_IOERR_DELETE : realVfs->xDelete(realVfs, name, 0);
}

} // namespace

FaultyFiles::FaultyFiles() {
    failAt(0);
    setFull(false);
    setMethods();
    Q_ASSERT(!sqlite3_vfs_find("faulty"));
    realVfs = sqlite3_vfs_find(nullptr);
    faultyVfs = *realVfs;
    faultyVfs.zName = "faulty";
    faultyVfs.pNext = nullptr;
    faultyVfs.szOsFile = static_cast<int>(sizeof(FaultyFile)) + realVfs->szOsFile;
    faultyVfs.xOpen = openFile;
    faultyVfs.xDelete = deleteFile;
    faultyVfs.xSleep = [](sqlite3_vfs*, int microseconds) {
        microsecondsWaited += microseconds;
        return microseconds;
    };
    sqlite3_vfs_register(&faultyVfs, 1);
}

FaultyFiles::~FaultyFiles() {
    sqlite3_vfs_unregister(&faultyVfs);
    sqlite3_vfs_register(realVfs, 1);
}

void FaultyFiles::failAt(int n) {
    counted = 0;
    loose = 0;
    microsecondsWaited = 0;
    failing = n;
}

void FaultyFiles::setFull(bool full) {
    isFull = full;
}

int FaultyFiles::operations() const {
    return counted;
}

int FaultyFiles::looseRemovals() const {
    return loose;
}

int FaultyFiles::waited() const {
    return microsecondsWaited / 1000;
}

} // namespace tallyroom
