// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/EarthquakeQuery.h"
#include "Core/Persistence/ModelContext.h"
#include "Core/Persistence/PersistenceController.h"
#include "Support/TestEarthquake.h"
#include "Support/World.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>

#include <SQLiteCpp/Database.h>

#include <csignal>
#include <cstdio>
#include <random>

#include <unistd.h>

namespace {
QByteArray bytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

SQLite::Database database(const QString &path, const char *sql)
{
    SQLite::Database made(path.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    made.exec(sql);
    return made;
}

/// A store of ours with one event and then `sql` done to it.
void makeStore(const QString &path, const char *sql)
{
    {
        ModelContainer container({.path = path});
        container.mainContext().insert(testEarthquake(QStringLiteral("a"), 10));
        container.mainContext().save();
    }
    database(path, sql);
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

// What this program does when it is started with a role as its first argument and a path as its second.

/// Saves one event and dies at once, without any clean-up.
int saveAndDie(const QString &path)
{
    World world;
    ModelContainer container({.path = path});
    container.mainContext().insert(testEarthquake(QStringLiteral("killed"), 20));
    container.mainContext().save();
    return raise(SIGKILL);
}

/// Opens the shared store, and tells its failure handler's text too.
int openShared(const QString &path)
{
    World world;
    Platform::current().storePath = path;
    PersistenceController::setFailureHandler([](const QString &message) {
        std::fprintf(stdout, "shown: %s", qUtf8Printable(message));
        std::fflush(stdout);
    });
    PersistenceController::shared();
    std::puts("opened");
    return 0;
}

/// Opens the store as a user who may read it but not write it: root, whom no mode bit stops, becomes nobody first.
int openUnprivileged(const QString &path)
{
    if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0))
        return 2;
    std::fputs(qUtf8Printable(openingError(path)), stdout);
    return 0;
}

struct Outcome
{
    int status;
    bool crashed;
    QString output;
    QString error;
};

/// Runs this program anew in a role.
Outcome run(const char *role, const QString &path)
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(role), path});
    process.waitForFinished(60000);
    return {process.exitCode(), process.exitStatus() == QProcess::CrashExit,
            QString::fromUtf8(process.readAllStandardOutput()), QString::fromUtf8(process.readAllStandardError())};
}
}

class StoreFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsNoStoreIsRefusedAndLeftAlone_data()
    {
        QTest::addColumn<QByteArray>("kind");
        QTest::addColumn<QString>("reason");
        QTest::newRow("text") << QByteArray("text") << "not a database";
        QTest::newRow("one byte") << QByteArray("byte") << "not a database";
        QTest::newRow("mark of a database alone") << QByteArray("mark") << "not a database";
        QTest::newRow("header of a database, then junk") << QByteArray("junk") << "";
        QTest::newRow("another program's database") << QByteArray("foreign") << "another program";
        QTest::newRow("another program's empty database") << QByteArray("foreign mark") << "another program";
        QTest::newRow("another program's database of our version")
            << QByteArray("foreign version") << "another program";
        QTest::newRow("version one above ours") << QByteArray("newer") << "newer version";
        QTest::newRow("newest version there can be") << QByteArray("newest") << "newer version";
        QTest::newRow("our mark without a version") << QByteArray("no version") << "another program";
    }

    void whatIsNoStoreIsRefusedAndLeftAlone()
    {
        QFETCH(QByteArray, kind);
        QFETCH(QString, reason);
        World world;
        const QString path = world.folder.filePath(QStringLiteral("the store.sqlite"));
        if (kind == "text")
            write(path, QByteArray(5000, 'x'));
        else if (kind == "byte")
            write(path, "x");
        else if (kind == "mark")
            write(path, QByteArray("SQLite format 3\0", 16));
        else if (kind == "junk")
            write(path, QByteArray("SQLite format 3\0", 16) + QByteArray(5000, 'x'));
        else if (kind == "foreign")
            database(path, "CREATE TABLE tune (name TEXT)");
        else if (kind == "foreign mark")
            database(path, "PRAGMA application_id = 7");
        else if (kind == "foreign version")
            makeStore(path, "PRAGMA application_id = 7");
        else if (kind == "newer")
            makeStore(path, "PRAGMA user_version = 2");
        else if (kind == "newest")
            makeStore(path, "PRAGMA user_version = 2147483647");
        else
            makeStore(path, "PRAGMA user_version = 0");
        const QByteArray before = bytes(path);
        const QString error = openingError(path);
        QVERIFY2(error.contains(path) && error.contains(reason), qUtf8Printable(error));
        QCOMPARE(bytes(path), before);
        QCOMPARE(QDir(world.folder.path()).entryList(QDir::Files), QStringList{QStringLiteral("the store.sqlite")});
    }

    void aDamagedStoreIsRefusedAndLeftAlone_data()
    {
        QTest::addColumn<QByteArray>("damaged");
        World world;
        const QString path = world.folder.filePath(QStringLiteral("sound.sqlite"));
        makeStore(path, "");
        const QByteArray sound = bytes(path);
        constexpr qsizetype pageBytes = 4096;
        QTest::newRow("header zeroed") << QByteArray(100, '\0') + sound.mid(100);
        for (qsizetype size = pageBytes; size < sound.size(); size += pageBytes)
            QTest::addRow("cut after page %d", int(size / pageBytes)) << sound.left(size);
        std::mt19937 engine(1);
        for (const qsizetype from : {0, 16, 16, 16, 28, 40, 100}) {
            QByteArray damaged = sound;
            for (qsizetype i = from; i < pageBytes; ++i)
                damaged[i] = char(engine());
            QTest::addRow("random bytes over the first page from %d, first %d", int(from), int(damaged[from]))
                << damaged;
        }
    }

    void aDamagedStoreIsRefusedAndLeftAlone()
    {
        QFETCH(QByteArray, damaged);
        World world;
        const QString path = world.folder.filePath(QStringLiteral("store.sqlite"));
        write(path, damaged);
        const QString error = openingError(path);
        QVERIFY2(error.contains(path), qUtf8Printable(error));
        QVERIFY(bytes(path) == damaged);
        QCOMPARE(QDir(world.folder.path()).entryList(QDir::Files), QStringList{QStringLiteral("store.sqlite")});
    }

    void aNewerStoreKeepsItsUnfinishedLog()
    {
        World world;
        const QString live = world.folder.filePath(QStringLiteral("live.sqlite"));
        const QString path = world.folder.filePath(QStringLiteral("copy.sqlite"));
        ModelContainer container({.path = live});
        database(live, "PRAGMA user_version = 2");
        for (const QString &end : {QString(), QStringLiteral("-wal")})
            QVERIFY(QFile::copy(live + end, path + end));
        const QByteArray file = bytes(path);
        const QByteArray log = bytes(path + QStringLiteral("-wal"));
        QVERIFY(openingError(path).contains(QStringLiteral("newer version")));
        QCOMPARE(bytes(path), file);
        QCOMPARE(bytes(path + QStringLiteral("-wal")), log);
    }

    void aFolderInItsPlaceIsRefused()
    {
        World world;
        const QString path = world.folder.filePath(QStringLiteral("store.sqlite"));
        QVERIFY(QDir().mkpath(path));
        const QString error = openingError(path);
        QVERIFY2(error.contains(path) && error.contains(QStringLiteral("not a file")), qUtf8Printable(error));
        QVERIFY(QDir(path).exists() && QDir(path).isEmpty());
    }

    void aFileInPlaceOfItsFolderIsRefused()
    {
        World world;
        write(world.folder.filePath(QStringLiteral("folder")), "text");
        const QString path = world.folder.filePath(QStringLiteral("folder/store.sqlite"));
        const QString error = openingError(path);
        QVERIFY2(error.contains(path) && error.contains(QStringLiteral("folder cannot be made")),
                 qUtf8Printable(error));
        QCOMPARE(bytes(world.folder.filePath(QStringLiteral("folder"))), QByteArray("text"));
    }

    void aFileThatCannotBeWrittenIsRefused()
    {
        World world;
        QFile::setPermissions(world.folder.path(), QFile::Permissions(0x7755));
        const QString path = world.folder.filePath(QStringLiteral("store.sqlite"));
        makeStore(path, "PRAGMA journal_mode = DELETE");
        QVERIFY(QFile::setPermissions(path, QFile::Permissions(0x4444)));
        const QByteArray before = bytes(path);
        const Outcome outcome = run("openUnprivileged", path);
        QCOMPARE(outcome.status, 0);
        QVERIFY2(outcome.output.contains(path) && outcome.output.contains(QStringLiteral("cannot be written")),
                 qUtf8Printable(outcome.output));
        QCOMPARE(bytes(path), before);
    }

    void anEmptyFileBecomesAStore()
    {
        World world;
        const QString path = world.folder.filePath(QStringLiteral("store.sqlite"));
        write(path, {});
        QCOMPARE(openingError(path), QString());
        QCOMPARE(openingError(path), QString());
    }

    void savedRowsOutliveAKill()
    {
        World world;
        const QString path = world.folder.filePath(QStringLiteral("store.sqlite"));
        makeStore(path, "");
        ModelContainer container({.path = path});
        EarthquakeQuery &query = container.earthquakes();
        QVERIFY(run("saveAndDie", path).crashed);
        QCOMPARE(eventIDs(container.mainContext().fetch({})), QStringLiteral("a killed"));
        query.refreshFromStore();
        QCOMPARE(eventIDs(query.earthquakes()), QStringLiteral("killed a"));
    }

    void savedRowsReachTheDisk()
    {
        World world;
        const QString path = world.folder.filePath(QStringLiteral("store.sqlite"));
        ModelContainer container({.path = path});
        container.mainContext().insert(testEarthquake(QStringLiteral("a"), 10));
        container.mainContext().save();
        // What the disk holds now, seen without the memory that the connections share.
        const QString copy = world.folder.filePath(QStringLiteral("copy.sqlite"));
        for (const QString &end : {QString(), QStringLiteral("-wal")})
            QVERIFY(QFile::copy(path + end, copy + end));
        QCOMPARE(eventIDs(ModelContainer({.path = copy}).mainContext().fetch({})), QStringLiteral("a"));
    }

    void aStoreThatCannotBeOpenedEndsTheProgram()
    {
        World world;
        const QString path = world.folder.filePath(QStringLiteral("store.sqlite"));
        write(path, QByteArray(5000, 'x'));
        const Outcome outcome = run("openShared", path);
        QVERIFY(!outcome.crashed);
        QCOMPARE(outcome.status, 1);
        const QString message = QStringLiteral("Failed to create ModelContainer: %1: it is not a database").arg(path);
        QCOMPARE(outcome.error, message + QLatin1Char('\n'));
        QCOMPARE(outcome.output, QStringLiteral("shown: ") + message);
        QCOMPARE(bytes(path), QByteArray(5000, 'x'));
        QFile::remove(path);
        QCOMPARE(run("openShared", path).output, QStringLiteral("opened\n"));
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
        QCOMPARE(&PersistenceController::preview().container(), &container);
        QVERIFY(container.mainContext().hasChanges());
        const auto rows = container.mainContext().fetch({.sort = FetchDescriptor::Sort::dateReverse});
        QCOMPARE(eventIDs(rows), QStringLiteral("es2025prev001 es2025prev002 es2025prev003"));
        QVERIFY(rows.at(1).date() == world.clock.now() - std::chrono::hours(2));
        QVERIFY(rows.at(1).fetchedAt() == world.clock.now());
        QCOMPARE(rows.at(1).magnitude(), 4.5);
        QCOMPARE(rows.at(1).maxIntensity(), std::optional(QStringLiteral("IV")));
        QVERIFY(!rows.at(2).maxIntensity());
        QVERIFY(container.earthquakes().count() == 3);
        QVERIFY(ModelContext(container).fetch({}).empty());
        QVERIFY(QDir(world.folder.path()).isEmpty());
        QVERIFY(!QFile::exists(container.location()));
    }

    void storesInMemoryAreApartAndSharedByTheirContexts()
    {
        World world;
        ModelContainer one({.isStoredInMemoryOnly = true});
        const ModelContainer two({.isStoredInMemoryOnly = true});
        one.mainContext().insert(testEarthquake(QStringLiteral("a"), 10));
        one.mainContext().save();
        QCOMPARE(ModelContext(one).fetchCount({}), qint64(1));
        QVERIFY(one.location() != two.location());
        ModelContainer three({.isStoredInMemoryOnly = true});
        QCOMPARE(three.mainContext().fetchCount({}), qint64(0));
    }
};

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    if (argc == 3) {
        const QByteArray role(argv[1]);
        const QString path = QString::fromLocal8Bit(argv[2]);
        if (role == "saveAndDie")
            return saveAndDie(path);
        if (role == "openShared")
            return openShared(path);
        if (role == "openUnprivileged")
            return openUnprivileged(path);
    }
    StoreFileTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "StoreFileTest.moc"
