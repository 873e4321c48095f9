// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/StoreFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <SQLiteCpp/Exception.h>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>

#include <sqlite3.h>

namespace {
constexpr int schemaVersion = 1;
/// "orvl", by which the header of a store of ours is told from other databases.
constexpr int applicationId = 0x6f72766c;
/// Another process holds the write lock for milliseconds, while it saves a page. The window stands still meanwhile.
constexpr int busyTimeoutMs = 2000;
constexpr int busyPauseMs = 5;
/// Without SQLite's own locks, a tenth of the time of a read: each connection is used by the main thread alone.
const int openFlags = SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE | SQLite::OPEN_NOMUTEX;

constexpr auto schema = R"sql(
    CREATE TABLE earthquake (
        id INTEGER PRIMARY KEY,
        eventID TEXT NOT NULL UNIQUE,
        date INTEGER NOT NULL,
        latitude REAL,
        longitude REAL,
        depth REAL,
        magnitude REAL,
        magnitudeType TEXT NOT NULL,
        maxIntensity TEXT,
        location TEXT NOT NULL,
        fetchedAt INTEGER NOT NULL
    );
    CREATE INDEX earthquake_date ON earthquake (date);
    )sql";

bool isInMemory(const QString &location)
{
    return location.startsWith(QStringLiteral("file:/orvalia-")) && location.endsWith(QStringLiteral("?vfs=memdb"));
}

/// True after a pause, false when it has taken too long. SQLite's own way is to look again at ever longer intervals, of
/// 100 ms at last, in which a process that saves page after page has taken the lock again each time.
int waitForLock(void *, int triesBefore)
{
    if (triesBefore * busyPauseMs >= busyTimeoutMs)
        return 0;
    sqlite3_sleep(busyPauseMs);
    return 1;
}

SQLite::Database openDatabase(const std::string &name, int flags)
{
    SQLite::Database database(name, flags);
    sqlite3_busy_handler(database.getHandle(), waitForLock, nullptr);
    return database;
}

int pragma(SQLite::Database &database, const char *name)
{
    return database.execAndGet(std::string("PRAGMA ") + name).getInt();
}

bool holdsNothing(SQLite::Database &database)
{
    return database.execAndGet("SELECT count(*) FROM sqlite_master").getInt() == 0;
}

/// Reads only. A file with nothing in it is a store yet to be made.
void checkIsOurs(SQLite::Database &database)
{
    // One state of the file, while another process may be making the store.
    const SQLite::Transaction together(database);
    const int version = pragma(database, "user_version");
    const int owner = pragma(database, "application_id");
    if (version == 0 && owner == 0 && holdsNothing(database))
        return;
    if (owner != applicationId || version < 1)
        throw SQLite::Exception("it is a database of another program");
    if (version > schemaVersion)
        throw SQLite::Exception("it was written by a newer version of this program");
}

void makeTable(SQLite::Database &database)
{
    SQLite::Transaction transaction(database, SQLite::TransactionBehavior::IMMEDIATE);
    // Another process may have been first.
    if (pragma(database, "user_version") == schemaVersion)
        return;
    database.exec(schema);
    database.exec("PRAGMA application_id = " + std::to_string(applicationId));
    database.exec("PRAGMA user_version = " + std::to_string(schemaVersion));
    transaction.commit();
}

/// SQLite takes a file of a few bytes for an empty database and would write over it.
void checkIsDatabase(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return;
    if (!info.isFile())
        throw SQLite::Exception("it is not a file");
    QFile file(path);
    if (info.size() == 0 || !file.open(QIODevice::ReadOnly))
        return;
    constexpr QByteArrayView mark("SQLite format 3\0", 16);
    constexpr qint64 smallestPage = 512;
    if (info.size() < smallestPage || file.read(mark.size()) != mark)
        throw SQLite::Exception("it is not a database");
}

/// Closing a connection brings the write-ahead log of a process that crashed into the file. Until the file is known
/// to be ours, its log is left alone.
void setLogIsKeptAtClose(SQLite::Database &database, bool isKept)
{
    sqlite3_db_config(database.getHandle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, isKept ? 1 : 0, nullptr);
}

/// Of two processes that change a new file at once SQLite refuses one without waiting, lest both wait for each other.
void keepWriteAheadLog(SQLite::Database &database)
{
    for (int tries = 0;; ++tries) {
        try {
            if (database.execAndGet("PRAGMA journal_mode = WAL").getString() != "wal")
                throw SQLite::Exception("it cannot keep a write-ahead log");
            return;
        } catch (const SQLite::Exception &error) {
            if (error.getErrorCode() != SQLITE_BUSY || waitForLock(nullptr, tries) == 0)
                throw;
        }
    }
}

SQLite::Database openFile(const QString &path)
{
    if (!QDir().mkpath(QFileInfo(path).absolutePath()))
        throw SQLite::Exception("its folder cannot be made");
    checkIsDatabase(path);
    const bool hasLog = QFile::exists(path + QStringLiteral("-wal"));
    SQLite::Database database = openDatabase(QFile::encodeName(path).toStdString(), openFlags);
    if (hasLog)
        setLogIsKeptAtClose(database, true);
    checkIsOurs(database);
    setLogIsKeptAtClose(database, false);
    // SQLite falls back to reading alone without a word.
    if (sqlite3_db_readonly(database.getHandle(), "main") == 1)
        throw SQLite::Exception("it cannot be written");
    keepWriteAheadLog(database);
    return database;
}

SQLite::Database openMemory(const QString &location)
{
    return openDatabase(location.toStdString(), openFlags | SQLite::OPEN_URI);
}
}

SQLite::Database openStore(const QString &location)
{
    try {
        SQLite::Database database = isInMemory(location) ? openMemory(location) : openFile(location);
        database.exec("PRAGMA synchronous = FULL");
        if (pragma(database, "user_version") == 0)
            makeTable(database);
        return database;
    } catch (const SQLite::Exception &error) {
        throw storeError(location, error.what());
    }
}

QString newInMemoryLocation()
{
    static int number = 0;
    return QStringLiteral("file:/orvalia-%1?vfs=memdb").arg(++number);
}

StoreError storeError(const QString &location, const char *reason)
{
    return StoreError(location.toStdString() + ": " + reason);
}
