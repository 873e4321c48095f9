// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/FaultyDisk.h"

#include <sqlite3.h>

#include <algorithm>
#include <csignal>
#include <deque>
#include <utility>
#include <vector>

namespace {
/// What a write or a truncation took away.
struct Change
{
    sqlite3_file *file;
    sqlite3_int64 sizeBefore;
    sqlite3_int64 offset;
    std::vector<char> bytesBefore;
};

/// A file's functions with ours among them, and those that it had. SQLite has one table of them for the store and
/// another for its logs, which are never locked.
struct Methods
{
    sqlite3_io_methods patched;
    const sqlite3_io_methods *real;
};

std::deque<Methods> allMethods;
sqlite3_vfs faulty;
int (*realOpen)(sqlite3_vfs *, const char *, sqlite3_file *, int, int *);
int (*realDelete)(sqlite3_vfs *, const char *, int);
int (*realSleep)(sqlite3_vfs *, int);

DiskFault fault = DiskFault::none;
int callsLeft = 0;
bool hasStruck = false;
std::vector<Change> unsynchronised;
std::function<void()> passTime;

const sqlite3_io_methods *real(const sqlite3_file *file)
{
    // A table of ours begins with what SQLite knows of it.
    return reinterpret_cast<const Methods *>(file->pMethods)->real;
}

bool isDeadly()
{
    return fault == DiskFault::kill || fault == DiskFault::killMidway || fault == DiskFault::powerCut;
}

[[noreturn]] void die()
{
    if (fault == DiskFault::powerCut)
        for (auto change = unsynchronised.rbegin(); change != unsynchronised.rend(); ++change) {
            real(change->file)
                ->xWrite(change->file, change->bytesBefore.data(), int(change->bytesBefore.size()), change->offset);
            real(change->file)->xTruncate(change->file, change->sizeBefore);
        }
    for (;;)
        std::raise(SIGKILL);
}

enum class Call { reads, changes, writes };

/// Counts a call. True when it is to fail.
bool strikes(Call call)
{
    const bool isConcerned = fault == DiskFault::error || (isDeadly() && call != Call::reads) || call == Call::writes;
    if (fault == DiskFault::none || !isConcerned || --callsLeft > 0)
        return false;
    if (callsLeft < 0 && fault != DiskFault::full)
        return false;
    hasStruck = true;
    if (isDeadly() && !(fault == DiskFault::killMidway && call == Call::writes))
        die();
    return true;
}

void remember(sqlite3_file *file, sqlite3_int64 offset, sqlite3_int64 length)
{
    Change change{file, 0, offset, std::vector<char>(size_t(std::max<sqlite3_int64>(length, 0)))};
    real(file)->xFileSize(file, &change.sizeBefore);
    real(file)->xRead(file, change.bytesBefore.data(), int(change.bytesBefore.size()), offset);
    unsynchronised.push_back(std::move(change));
}

int read(sqlite3_file *file, void *bytes, int count, sqlite3_int64 offset)
{
    return strikes(Call::reads) ? SQLITE_IOERR_READ : real(file)->xRead(file, bytes, count, offset);
}

int write(sqlite3_file *file, const void *bytes, int count, sqlite3_int64 offset)
{
    const bool isStruck = strikes(Call::writes);
    if (isStruck && (fault == DiskFault::shortWrite || fault == DiskFault::killMidway))
        real(file)->xWrite(file, bytes, count / 2, offset);
    if (isStruck && isDeadly())
        die();
    if (isStruck)
        return fault == DiskFault::error ? SQLITE_IOERR_WRITE : SQLITE_FULL;
    if (fault == DiskFault::powerCut)
        remember(file, offset, count);
    return real(file)->xWrite(file, bytes, count, offset);
}

void forget(sqlite3_file *file)
{
    std::erase_if(unsynchronised, [file](const Change &change) { return change.file == file; });
}

int close(sqlite3_file *file)
{
    forget(file);
    return real(file)->xClose(file);
}

int truncate(sqlite3_file *file, sqlite3_int64 size)
{
    if (strikes(Call::changes))
        return SQLITE_IOERR_TRUNCATE;
    if (fault == DiskFault::powerCut) {
        sqlite3_int64 sizeBefore = 0;
        real(file)->xFileSize(file, &sizeBefore);
        remember(file, size, sizeBefore - size);
    }
    return real(file)->xTruncate(file, size);
}

int synchronise(sqlite3_file *file, int flags)
{
    if (strikes(Call::changes))
        return SQLITE_IOERR_FSYNC;
    forget(file);
    return real(file)->xSync(file, flags);
}

int mapShared(sqlite3_file *file, int region, int size, int extends, volatile void **memory)
{
    return strikes(Call::reads) ? SQLITE_IOERR_SHMMAP : real(file)->xShmMap(file, region, size, extends, memory);
}

const sqlite3_io_methods &patched(const sqlite3_io_methods *methods)
{
    for (const Methods &known : allMethods)
        if (known.real == methods)
            return known.patched;
    allMethods.push_back({*methods, methods});
    sqlite3_io_methods &made = allMethods.back().patched;
    made.iVersion = 2; // without reading through mapped memory
    made.xClose = close;
    made.xRead = read;
    made.xWrite = write;
    made.xTruncate = truncate;
    made.xSync = synchronise;
    if (made.xShmMap)
        made.xShmMap = mapShared;
    return made;
}

int open(sqlite3_vfs *vfs, const char *name, sqlite3_file *file, int flags, int *outFlags)
{
    if (strikes(Call::reads))
        return file->pMethods = nullptr, SQLITE_CANTOPEN;
    const int result = realOpen(vfs, name, file, flags, outFlags);
    if (file->pMethods)
        file->pMethods = &patched(file->pMethods);
    return result;
}

int remove(sqlite3_vfs *vfs, const char *name, int synchronisesFolder)
{
    return strikes(Call::changes) ? SQLITE_IOERR_DELETE : realDelete(vfs, name, synchronisesFolder);
}

int sleep(sqlite3_vfs *vfs, int microseconds)
{
    if (!passTime)
        return realSleep(vfs, microseconds);
    passTime();
    return microseconds;
}

void install()
{
    if (realOpen)
        return;
    faulty = *sqlite3_vfs_find(nullptr);
    faulty.zName = "faulty";
    realOpen = std::exchange(faulty.xOpen, open);
    realDelete = std::exchange(faulty.xDelete, remove);
    realSleep = std::exchange(faulty.xSleep, sleep);
    sqlite3_vfs_register(&faulty, 1);
}
}

void FaultyDisk::arm(DiskFault wanted, int call)
{
    install();
    fault = wanted;
    callsLeft = call;
    hasStruck = false;
    unsynchronised.clear();
}

bool FaultyDisk::disarm()
{
    fault = DiskFault::none;
    return hasStruck;
}

void FaultyDisk::whenPausing(const std::function<void()> &pass)
{
    install();
    passTime = pass;
}
