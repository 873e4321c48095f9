// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/EarthquakeQuery.h"
#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"
#include "Core/Repositories/EarthquakeRepository.h"
#include "Core/ViewModels/HistoricoViewModel.h"
#include "Support/FakeDataSource.h"
#include "Support/FaultyDisk.h"
#include "Support/TestEarthquake.h"
#include "Support/World.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <SQLiteCpp/Database.h>

#include <algorithm>
#include <csignal>
#include <functional>
#include <random>
#include <span>

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {
enum class Found { nothing, store, storeWithLog };

/// Rows of the page, told apart by `name`, each of which fills a good part of a page of the file.
QList<ParsedEarthquake> rows(const QString &name, int count)
{
    QList<ParsedEarthquake> made;
    for (int number = 0; number < count; ++number) {
        ParsedEarthquake row;
        row.eventID = name + QString::number(number);
        row.date = Instant(std::chrono::seconds(number));
        row.location = QString(700, QLatin1Char('x'));
        made.append(row);
    }
    return made;
}

/// What refreshes the store at `path` from a page.
struct Refresher
{
    explicit Refresher(const QString &path)
        : container({.path = path})
        , repository(container.mainContext(), std::unique_ptr<EarthquakeDataSource>(source))
    {
    }

    /// True when the refresh went well.
    bool refresh(const QList<ParsedEarthquake> &page)
    {
        source->rows = page;
        repository.refresh();
        return !repository.lastError();
    }

    /// True when nothing is pending any more.
    bool save()
    {
        try {
            container.mainContext().save();
            return true;
        } catch (const StoreError &) {
            return false;
        }
    }

    ModelContainer container;
    FakeDataSource *source = new FakeDataSource;
    EarthquakeRepository repository;
};

QString sortedIDs(std::span<const Earthquake> earthquakes)
{
    QStringList ids = eventIDs(earthquakes).split(u' ', Qt::SkipEmptyParts);
    ids.sort();
    return ids.join(u' ');
}

/// All that another process would find now.
QString stored(const QString &path)
{
    ModelContainer container({.path = path});
    return sortedIDs(container.mainContext().fetch({}));
}

QString integrity(const QString &path)
{
    SQLite::Database database(path.toStdString(), SQLite::OPEN_READWRITE);
    return QString::fromStdString(database.execAndGet("PRAGMA integrity_check").getString());
}

/// Begins `work` in a process of its own.
pid_t startedInAnotherProcess(const std::function<void()> &work)
{
    const pid_t child = fork();
    if (child == 0) {
        // Nothing may unwind into the test runner's copy of its own main().
        try {
            work();
            _exit(0);
        } catch (const std::exception &error) {
            std::fprintf(stderr, "%s\n", error.what());
            _exit(2);
        }
    }
    return child;
}

/// Waits for the end of a process and tells it as waitpid() does.
int endOf(pid_t child)
{
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

int inAnotherProcess(const std::function<void()> &work)
{
    return endOf(startedInAnotherProcess(work));
}

bool isKilled(int status)
{
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
}

/// A folder with the files of a store, of which each trial takes a copy.
class StartingPoint
{
public:
    explicit StartingPoint(Found found)
    {
        if (found == Found::nothing)
            return;
        Refresher(path()).refresh(rows(QStringLiteral("old"), 8));
        if (found == Found::storeWithLog)
            inAnotherProcess([this] {
                Refresher(path()).refresh(rows(QStringLiteral("older"), 8));
                Refresher again(path());
                again.refresh(rows(QStringLiteral("log"), 8));
                std::raise(SIGKILL);
            });
        before = stored(copy(m_folder.filePath(QStringLiteral("look"))));
    }

    /// The path of the store in `folder`, which is made anew.
    QString copy(const QString &folder) const
    {
        QDir(folder).removeRecursively();
        QDir().mkpath(folder);
        for (const QString &name : QDir(m_folder.path()).entryList(QDir::Files))
            QFile::copy(m_folder.filePath(name), folder + u'/' + name);
        return folder + QStringLiteral("/store.sqlite");
    }

    QString path() const { return m_folder.filePath(QStringLiteral("store.sqlite")); }

    /// The numbers in the store.
    QString before;

private:
    QTemporaryDir m_folder;
};

QString sum(const QString &before, const QList<ParsedEarthquake> &page)
{
    QStringList ids = before.split(u' ', Qt::SkipEmptyParts);
    for (const ParsedEarthquake &row : page)
        ids.append(row.eventID);
    ids.sort();
    ids.removeDuplicates();
    return ids.join(u' ');
}
}

Q_DECLARE_METATYPE(DiskFault)

/// Saves under faults at every call that SQLite makes to the disk.
class StoreFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // Where there is a folder in memory, no trial waits for a disk: what a cut would lose is known without.
        if (QFileInfo(QStringLiteral("/dev/shm")).isWritable())
            qputenv("TMPDIR", "/dev/shm");
    }

    void deathAtAnyWriteLeavesBeforeOrAfter_data()
    {
        QTest::addColumn<Found>("found");
        QTest::addColumn<DiskFault>("fault");
        const auto add = [](const char *name, Found found) {
            QTest::addRow("killed, %s", name) << found << DiskFault::kill;
            QTest::addRow("killed within a write, %s", name) << found << DiskFault::killMidway;
            QTest::addRow("power cut, %s", name) << found << DiskFault::powerCut;
        };
        add("no store yet", Found::nothing);
        add("a store", Found::store);
        add("the log of a killed process", Found::storeWithLog);
    }

    void deathAtAnyWriteLeavesBeforeOrAfter()
    {
        QFETCH(Found, found);
        QFETCH(DiskFault, fault);
        World world;
        const StartingPoint start(found);
        const QList<ParsedEarthquake> page = rows(QStringLiteral("new"), 8);
        const QString after = sum(start.before, page);
        auto *isSaved =
            static_cast<bool *>(mmap(nullptr, sizeof(bool), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
        int deaths = 0;
        for (bool isOver = false; !isOver;) {
            const QString path = start.copy(world.folder.filePath(QStringLiteral("trial")));
            *isSaved = false;
            const int status = inAnotherProcess([&] {
                FaultyDisk::arm(fault, deaths + 1);
                Refresher refresher(path);
                *isSaved = refresher.refresh(page);
            });
            isOver = !isKilled(status);
            deaths += isOver ? 0 : 1;
            const QByteArray where = "call " + QByteArray::number(deaths);
            QVERIFY2(!isOver || (status == 0 && *isSaved), where);

            const QString left = stored(path);
            QVERIFY2(left == after || (left == start.before && !*isSaved), where + ": " + left.toUtf8());
            QCOMPARE(integrity(path), QStringLiteral("ok"));
            QVERIFY2(Refresher(path).refresh(page), where);
            QCOMPARE(stored(path), after);
        }
        munmap(isSaved, sizeof(bool));
        QVERIFY2(deaths > 20, qPrintable(QString::number(deaths)));
    }

    void failureOfAnyCallLosesNothing_data()
    {
        QTest::addColumn<Found>("found");
        QTest::addColumn<DiskFault>("fault");
        const auto add = [](const char *name, Found found) {
            QTest::addRow("disk full, %s", name) << found << DiskFault::full;
            QTest::addRow("error, %s", name) << found << DiskFault::error;
            QTest::addRow("short write, %s", name) << found << DiskFault::shortWrite;
        };
        add("no store yet", Found::nothing);
        add("a store", Found::store);
        add("the log of a killed process", Found::storeWithLog);
    }

    void failureOfAnyCallLosesNothing()
    {
        QFETCH(Found, found);
        QFETCH(DiskFault, fault);
        World world;
        const StartingPoint start(found);
        const QList<ParsedEarthquake> page = rows(QStringLiteral("new"), 8);
        const QList<ParsedEarthquake> nextPage = page + rows(QStringLiteral("newer"), 1);
        const QString after = sum(start.before, page);
        int openings = 0;
        int saves = 0;
        bool isStruck = true;
        for (int call = 1; isStruck; ++call) {
            const QString path = start.copy(world.folder.filePath(QStringLiteral("trial")));
            const QByteArray where = "call " + QByteArray::number(call);
            FaultyDisk::arm(fault, call);
            std::unique_ptr<Refresher> refresher;
            try {
                refresher = std::make_unique<Refresher>(path);
                const EarthquakeQuery &query = refresher->container.earthquakes();
                const bool isGood = refresher->refresh(page);
                isStruck = FaultyDisk::disarm();
                QVERIFY2(isGood || isStruck, where);
                saves += isGood ? 0 : 1;
                const QString onDisk = sortedIDs(ModelContext(refresher->container).fetch({}));
                QVERIFY2(onDisk == (isGood ? after : start.before), where + ": " + onDisk.toUtf8());
                QCOMPARE(refresher->container.mainContext().hasChanges(), !isGood);
                QVERIFY2(refresher->refresh(nextPage), where);
                QCOMPARE(sortedIDs(query.earthquakes()), sum(after, nextPage));
            } catch (const StoreError &) {
                ++openings;
                isStruck = FaultyDisk::disarm();
                QVERIFY2(isStruck, where);
                QCOMPARE(stored(path), start.before);
                refresher = std::make_unique<Refresher>(path);
                QVERIFY2(refresher->refresh(nextPage), where);
            }
            refresher.reset();
            QCOMPARE(stored(path), sum(after, nextPage));
            QCOMPARE(integrity(path), QStringLiteral("ok"));
        }
        QVERIFY2(saves > 3, qPrintable(QStringLiteral("%1 saves, %2 openings").arg(saves).arg(openings)));
    }

    void lockOfAnotherIsWaitedFor_data()
    {
        QTest::addColumn<int>("freeAtPause");
        QTest::addColumn<bool>("isGood");
        QTest::newRow("free after half a second") << 100 << true;
        QTest::newRow("never free") << 0 << false;
    }

    void lockOfAnotherIsWaitedFor()
    {
        QFETCH(int, freeAtPause);
        World world;
        Refresher refresher(world.folder.filePath(QStringLiteral("store.sqlite")));
        SQLite::Database peer(refresher.container.location().toStdString(), SQLite::OPEN_READWRITE);
        peer.exec("BEGIN IMMEDIATE");
        int pauses = 0;
        FaultyDisk::whenPausing([&] {
            if (++pauses == freeAtPause)
                peer.exec("COMMIT");
        });
        const QList<ParsedEarthquake> page = rows(QStringLiteral("new"), 2);
        QTEST(refresher.refresh(page), "isGood");
        FaultyDisk::whenPausing({});
        QVERIFY2(pauses <= 400, "the window stands still for too long");
        if (pauses > freeAtPause)
            peer.exec("COMMIT");
        QVERIFY(refresher.refresh(page + rows(QStringLiteral("newer"), 1)));
        QCOMPARE(stored(refresher.container.location()), QStringLiteral("new0 new1 newer0"));
    }

    void twoProcessesLoseNothing_data()
    {
        QTest::addColumn<int>("rounds");
        QTest::addColumn<int>("pages");
        QTest::newRow("both make the store") << 50 << 1;
        QTest::newRow("thousands of rows each") << 1 << 20;
    }

    void twoProcessesLoseNothing()
    {
        QFETCH(int, rounds);
        QFETCH(int, pages);
        World world;
        const auto page = [](const QString &name, int number) {
            return rows(name + QString::number(number) + u'-', 100) + rows(QStringLiteral("both%1-").arg(number), 50);
        };
        const QStringList names = {QStringLiteral("one"), QStringLiteral("other")};
        for (int round = 0; round < rounds; ++round) {
            const QString path = world.folder.filePath(QStringLiteral("%1.sqlite").arg(round));
            std::vector<pid_t> children;
            for (const QString &name : names)
                children.push_back(startedInAnotherProcess([&] {
                    Refresher refresher(path);
                    for (int number = 0; number < pages; ++number) {
                        bool isSaved = refresher.refresh(page(name, number));
                        // Where a disk stands still for seconds the store may stay locked. What is pending is saved
                        // with the next rows, of which there may be none here.
                        for (int tries = 1; !isSaved && tries < 10; ++tries)
                            isSaved = refresher.save();
                        if (!isSaved)
                            _exit(1);
                    }
                }));
            for (const pid_t child : children)
                QCOMPARE(endOf(child), 0);
            QString expected;
            for (const QString &name : names)
                for (int number = 0; number < pages; ++number)
                    expected = sum(expected, page(name, number));
            QCOMPARE(stored(path), expected);
            QCOMPARE(integrity(path), QStringLiteral("ok"));
        }
    }

    void damageInsideThePagesIsAFailedRead()
    {
        World world;
        const StartingPoint start(Found::store);
        std::mt19937 engine(1);
        QByteArray sound;
        int lost = 0;
        constexpr qsizetype pageBytes = 4096;
        for (qsizetype page = 1; page == 1 || page * pageBytes < sound.size(); ++page) {
            const QString path = start.copy(world.folder.filePath(QStringLiteral("trial")));
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadWrite));
            sound = file.readAll();
            file.seek(page * pageBytes);
            for (qsizetype i = 0; i < pageBytes; ++i)
                file.putChar(char(engine()));
            file.close();

            Refresher refresher(path);
            const EarthquakeQuery &query = refresher.container.earthquakes();
            HistoricoViewModel historico;
            historico.onAppear(refresher.container.mainContext());
            world.settle();
            lost += query.isEmpty() || historico.loadedEarthquakes().empty() ? 1 : 0;
            refresher.refresh(rows(QStringLiteral("new"), 2));
            QVERIFY(!refresher.repository.isLoading());
        }
        QVERIFY(sound.size() > 4 * pageBytes && lost > 0);
    }
};

QTEST_GUILESS_MAIN(StoreFaultsTest)
#include "StoreFaultsTest.moc"
