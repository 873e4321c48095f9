// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/ModelContext.h"
#include "Core/Persistence/PersistenceController.h"
#include "Support/Table.h"
#include "Support/TestEarthquake.h"
#include "Support/World.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <SQLiteCpp/Database.h>

#include <functional>
#include <random>

namespace {
QByteArray bytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

/// Every file and folder below a folder, with the files' bytes.
QMap<QString, QByteArray> contents(const QTemporaryDir &folder)
{
    QMap<QString, QByteArray> found;
    QDirIterator entries(folder.path(), QDir::AllEntries | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString path = entries.next();
        found.insert(path, bytes(path));
    }
    return found;
}

void write(const QString &path, const QByteArray &content)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

void execute(const QString &path, const char *sql)
{
    SQLite::Database(path.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE).exec(sql);
}

/// A store of ours with one event and then `sql` done to it.
void makeStore(const QString &path, const char *sql)
{
    {
        ModelContainer container({.path = path});
        container.mainContext().insert(testEarthquake(QStringLiteral("a"), 10));
        container.mainContext().save();
    }
    execute(path, sql);
}

/// The error of opening a store at `path`; empty when it opens.
QString openingError(const QString &path)
{
    try {
        const ModelContainer container({.path = path});
        return {};
    } catch (const StoreError &error) {
        return QString::fromUtf8(error.what());
    }
}
}

class StoreFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsNoStoreIsRefusedAndLeftAlone_data()
    {
        using Prepare = std::function<void(const QString &path)>;
        const auto file = [](const QByteArray &content) {
            return Prepare([content](const QString &path) { write(path, content); });
        };
        const Prepare foreign = [](const QString &path) {
            write(path, {});
            execute(path, "CREATE TABLE tune (name TEXT)");
        };
        const auto store = [](const char *sql) {
            return Prepare([sql](const QString &path) { makeStore(path, sql); });
        };
        const QByteArray mark("SQLite format 3\0", 16);
        const Table<Prepare, QString> row;
        row("text", file(QByteArray(5000, 'x')), "not a database");
        row("mark of a database alone", file(mark), "not a database");
        row(
            "a folder", [](const QString &path) { QVERIFY(QDir().mkpath(path)); }, "not a file");
        row(
            "a file in place of its folder", [](const QString &path) { write(QFileInfo(path).path(), "text"); },
            "folder cannot be made");
        row("another program's database", foreign, "another program");
        row("another program's database of our version", store("PRAGMA application_id = 7"), "another program");
        row("version one above ours", store("PRAGMA user_version = 2"), "newer version");
        row("our mark without a version", store("PRAGMA user_version = 0"), "another program");
    }

    void whatIsNoStoreIsRefusedAndLeftAlone()
    {
        const auto [prepare, reason] = Table<std::function<void(const QString &)>, QString>::current();
        World world;
        const QString path = world.folder.filePath(QStringLiteral("data/the store.sqlite"));
        prepare(path);
        const auto before = contents(world.folder);
        const QString error = openingError(path);
        QVERIFY2(error.contains(path) && error.contains(reason), qUtf8Printable(error));
        QCOMPARE(contents(world.folder), before);
    }

    void aDamagedStoreIsRefusedAndLeftAlone_data()
    {
        const Table<QByteArray> row;
        World world;
        const QString path = world.folder.filePath(QStringLiteral("sound.sqlite"));
        makeStore(path, "");
        const QByteArray sound = bytes(path);
        constexpr qsizetype pageBytes = 4096;
        row("header zeroed", QByteArray(100, '\0') + sound.mid(100));
        for (qsizetype size = pageBytes; size < sound.size(); size += pageBytes)
            row("cut after " + QByteArray::number(size), sound.left(size));
        std::mt19937 engine(1);
        for (const qsizetype from : {0, 16, 28, 40, 100}) {
            QByteArray damaged = sound;
            for (qsizetype i = from; i < pageBytes; ++i)
                damaged[i] = char(engine());
            row("random bytes over the first page from " + QByteArray::number(from), damaged);
        }
    }

    void aDamagedStoreIsRefusedAndLeftAlone()
    {
        const auto [damaged] = Table<QByteArray>::current();
        World world;
        const QString path = world.folder.filePath(QStringLiteral("store.sqlite"));
        write(path, damaged);
        const QString error = openingError(path);
        QVERIFY2(error.contains(path), qUtf8Printable(error));
        QVERIFY(contents(world.folder) == (QMap<QString, QByteArray>{{path, damaged}}));
    }

    void aNewerStoreKeepsItsUnfinishedLog()
    {
        World world;
        const QString live = world.folder.filePath(QStringLiteral("live.sqlite"));
        const QString path = world.folder.filePath(QStringLiteral("copy.sqlite"));
        ModelContainer container({.path = live});
        execute(live, "PRAGMA user_version = 2");
        for (const QString &end : {QString(), QStringLiteral("-wal")})
            QVERIFY(QFile::copy(live + end, path + end));
        const QByteArray before = bytes(path) + bytes(path + QStringLiteral("-wal"));
        QVERIFY(openingError(path).contains(QStringLiteral("newer version")));
        QCOMPARE(bytes(path) + bytes(path + QStringLiteral("-wal")), before);
    }

    void anEmptyFileBecomesAStore()
    {
        World world;
        const QString path = world.folder.filePath(QStringLiteral("store.sqlite"));
        write(path, {});
        QCOMPARE(openingError(path), QString());
        QCOMPARE(openingError(path), QString());
    }

    void sharedIsOneStoreAtTheInstalledPath()
    {
        World world;
        QCOMPARE(&PersistenceController::shared(), &PersistenceController::shared());
        QCOMPARE(PersistenceController::shared().container().location(), Platform::current().storePath);
        QVERIFY(QFile::exists(Platform::current().storePath));
    }

    void previewHoldsThreeEventsAndNoFile()
    {
        World world;
        ModelContainer &container = PersistenceController::preview().container();
        const auto rows = container.mainContext().fetch({.sort = FetchDescriptor::Sort::dateReverse});
        QCOMPARE(eventIDs(rows), QStringLiteral("es2025prev001 es2025prev002 es2025prev003"));
        QVERIFY(rows.at(1).date() == world.clock.now() - std::chrono::hours(2));
        QCOMPARE(rows.at(1).magnitude(), 4.5);
        QCOMPARE(rows.at(1).maxIntensity(), std::optional(QStringLiteral("IV")));
        QVERIFY(container.mainContext().hasChanges() && ModelContext(container).fetch({}).empty());
        QVERIFY(QDir(world.folder.path()).isEmpty());
        QVERIFY(!QFile::exists(container.location()));
    }

    void storesInMemoryAreApartAndSharedByTheirContexts()
    {
        World world;
        ModelContainer one({.isStoredInMemoryOnly = true});
        ModelContainer two({.isStoredInMemoryOnly = true});
        one.mainContext().insert(testEarthquake(QStringLiteral("a"), 10));
        one.mainContext().save();
        QCOMPARE(ModelContext(one).fetchCount({}), qint64(1));
        QCOMPARE(two.mainContext().fetchCount({}), qint64(0));
    }
};

QTEST_GUILESS_MAIN(StoreFileTest)
#include "StoreFileTest.moc"
