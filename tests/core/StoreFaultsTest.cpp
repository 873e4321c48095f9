// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/EarthquakeQuery.h"
#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"
#include "Core/Repositories/EarthquakeRepository.h"
#include "Core/ViewModels/HistoricoViewModel.h"
#include "Support/FakeDataSource.h"
#include "Support/FaultyDisk.h"
#include "Support/Table.h"
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
#include <span>

#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {
enum class Found { nothing, store, storeWithLog };

/// Rows of the page, told apart by `name`, each of which fills a good part of a page of the file.
QList<ParsedEarthquake> rows(const QString &name, int count)
{
    QList<ParsedEarthquake> made;
    for (int number = 0; number < count; ++number)
        made.append(
            testRow(name + QString::number(number), Instant(std::chrono::seconds(number)), 2.5, QString(700, u'x')));
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

/// The event numbers of a text and of a page, in order and each once.
QString sum(const QString &ids, const QList<ParsedEarthquake> &page)
{
    QStringList all = ids.split(u' ', Qt::SkipEmptyParts);
    for (const ParsedEarthquake &row : page)
        all.append(row.eventID);
    all.sort();
    all.removeDuplicates();
    return all.join(u' ');
}

QString sortedIDs(std::span<const Earthquake> earthquakes)
{
    QStringList ids = eventIDs(earthquakes).split(u' ', Qt::SkipEmptyParts);
    ids.sort();
    return ids.join(u' ');
}

/// All that another process would find now, or what is wrong with the file.
QString stored(const QString &path)
{
    ModelContainer container({.path = path});
    SQLite::Database database(path.toStdString());
    const std::string integrity = database.execAndGet("PRAGMA integrity_check").getString();
    return integrity == "ok" ? sortedIDs(container.mainContext().fetch({})) : QString::fromStdString(integrity);
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

/// A folder with the files of a store, of which each trial takes a copy.
class StartingPoint
{
public:
    explicit StartingPoint(Found found)
    {
        if (found == Found::nothing)
            return;
        Refresher(path()).refresh(rows(u"old"_s, 8));
        if (found == Found::storeWithLog)
            endOf(startedInAnotherProcess([this] {
                Refresher(path()).refresh(rows(u"older"_s, 8));
                Refresher again(path());
                again.refresh(rows(u"log"_s, 8));
                std::raise(SIGKILL);
            }));
        before = stored(copy(m_folder.filePath(u"look"_s)));
    }

    /// The path of the store in `folder`, which is made anew.
    QString copy(const QString &folder) const
    {
        QDir(folder).removeRecursively();
        QDir().mkpath(folder);
        for (const QString &name : QDir(m_folder.path()).entryList(QDir::Files))
            QFile::copy(m_folder.filePath(name), folder + u'/' + name);
        return folder + u"/store.sqlite"_s;
    }

    QString path() const { return m_folder.filePath(u"store.sqlite"_s); }

    /// The numbers in the store.
    QString before;

private:
    QTemporaryDir m_folder;
};

/// The rows of a test of these faults, each over every kind of store.
void overEachStore(const std::map<QByteArray, DiskFault> &faults)
{
    const Table<Found, DiskFault> row;
    for (const auto &[name, fault] : faults) {
        row(name + ", no store yet", Found::nothing, fault);
        row(name + ", a store", Found::store, fault);
        row(name + ", the log of a killed process", Found::storeWithLog, fault);
    }
}
}

/// Saves under faults at every call that SQLite makes to the disk.
class StoreFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // Where there is a folder in memory, no trial waits for a disk: what a cut would lose is known without.
        if (QFileInfo(u"/dev/shm"_s).isWritable())
            qputenv("TMPDIR", "/dev/shm");
    }

    void deathAtAnyWriteLeavesBeforeOrAfter_data()
    {
        overEachStore({{"killed", DiskFault::kill},
                       {"killed within a write", DiskFault::killMidway},
                       {"power cut", DiskFault::powerCut}});
    }

    void deathAtAnyWriteLeavesBeforeOrAfter()
    {
        const auto [found, death] = Table<Found, DiskFault>::current();
        const DiskFault fault = death;
        World world;
        const StartingPoint start(found);
        const QList<ParsedEarthquake> page = rows(u"new"_s, 8);
        const QString after = sum(start.before, page);
        int deaths = 0;
        for (bool isOver = false; !isOver;) {
            const QString path = start.copy(world.folder.filePath(u"trial"_s));
            QFile sign(path + u".saved"_s);
            const int status = endOf(startedInAnotherProcess([&] {
                FaultyDisk::arm(fault, deaths + 1);
                Refresher refresher(path);
                if (refresher.refresh(page))
                    sign.open(QIODevice::WriteOnly);
            }));
            isOver = !WIFSIGNALED(status) || WTERMSIG(status) != SIGKILL;
            deaths += isOver ? 0 : 1;
            const QByteArray where = "call " + QByteArray::number(deaths);
            QVERIFY2(!isOver || (status == 0 && sign.exists()), where);

            const QString left = stored(path);
            QVERIFY2(left == after || (left == start.before && !sign.exists()), where + ": " + left.toUtf8());
            QVERIFY2(Refresher(path).refresh(page), where);
            QCOMPARE(stored(path), after);
        }
        QVERIFY2(deaths > 20, qPrintable(QString::number(deaths)));
    }

    void failureOfAnyCallLosesNothing_data()
    {
        overEachStore(
            {{"disk full", DiskFault::full}, {"error", DiskFault::error}, {"short write", DiskFault::shortWrite}});
    }

    void failureOfAnyCallLosesNothing()
    {
        const auto [found, fault] = Table<Found, DiskFault>::current();
        World world;
        const StartingPoint start(found);
        const QList<ParsedEarthquake> page = rows(u"new"_s, 8);
        const QList<ParsedEarthquake> nextPage = page + rows(u"newer"_s, 1);
        const QString after = sum(start.before, page);
        int saves = 0;
        bool isStruck = true;
        for (int call = 1; isStruck; ++call) {
            const QString path = start.copy(world.folder.filePath(u"trial"_s));
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
                isStruck = FaultyDisk::disarm();
                QVERIFY2(isStruck, where);
                QCOMPARE(stored(path), start.before);
                refresher = std::make_unique<Refresher>(path);
                QVERIFY2(refresher->refresh(nextPage), where);
            }
            refresher.reset();
            QCOMPARE(stored(path), sum(after, nextPage));
        }
        QVERIFY2(saves > 3, qPrintable(QString::number(saves)));
    }

    void lockOfAnotherIsWaitedFor_data()
    {
        const Table<int, bool> row;
        row("free after half a second", 100, true);
        row("never free", 0, false);
    }

    void lockOfAnotherIsWaitedFor()
    {
        const auto [lastPause, isGood] = Table<int, bool>::current();
        const int freeAtPause = lastPause;
        World world;
        Refresher refresher(world.folder.filePath(u"store.sqlite"_s));
        SQLite::Database peer(refresher.container.location().toStdString(), SQLite::OPEN_READWRITE);
        peer.exec("BEGIN IMMEDIATE");
        int pauses = 0;
        FaultyDisk::whenPausing([&] {
            if (++pauses == freeAtPause)
                peer.exec("COMMIT");
        });
        const QList<ParsedEarthquake> page = rows(u"new"_s, 2);
        QCOMPARE(refresher.refresh(page), isGood);
        FaultyDisk::whenPausing({});
        QVERIFY2(pauses <= 400, "the window stands still for too long");
        if (pauses > freeAtPause)
            peer.exec("COMMIT");
        QVERIFY(refresher.refresh(page + rows(u"newer"_s, 1)));
        QCOMPARE(stored(refresher.container.location()), u"new0 new1 newer0"_s);
    }

    void twoProcessesLoseNothing_data()
    {
        const Table<int, int> row;
        row("both make the store", 50, 1);
        row("thousands of rows each", 1, 20);
    }

    void twoProcessesLoseNothing()
    {
        const auto [rounds, pagesEach] = Table<int, int>::current();
        const int pages = pagesEach;
        World world;
        const auto page = [](const QString &name, int number) {
            return rows(name + QString::number(number) + u'-', 100) + rows(u"both%1-"_s.arg(number), 50);
        };
        const QStringList names = {u"one"_s, u"other"_s};
        for (int round = 0; round < rounds; ++round) {
            const QString path = world.folder.filePath(u"%1.sqlite"_s.arg(round));
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
        }
    }

    void damageInsideThePagesIsAFailedRead()
    {
        World world;
        const StartingPoint start(Found::store);
        qsizetype size = 0;
        int lost = 0;
        constexpr qsizetype pageBytes = 4096;
        for (qsizetype page = 1; page == 1 || page * pageBytes < size; ++page) {
            const QString path = start.copy(world.folder.filePath(u"trial"_s));
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadWrite));
            size = file.size();
            file.seek(page * pageBytes);
            file.write(QByteArray("noise").repeated(pageBytes).first(pageBytes));
            file.close();

            Refresher refresher(path);
            const EarthquakeQuery &query = refresher.container.earthquakes();
            HistoricoViewModel historico;
            historico.onAppear(refresher.container.mainContext());
            world.settle();
            lost += query.isEmpty() || historico.loadedEarthquakes().empty() ? 1 : 0;
            refresher.refresh(rows(u"new"_s, 2));
            QVERIFY(!refresher.repository.isLoading());
        }
        QVERIFY(size > 4 * pageBytes && lost > 0);
    }
};

QTEST_GUILESS_MAIN(StoreFaultsTest)
#include "StoreFaultsTest.moc"
