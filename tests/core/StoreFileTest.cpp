// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/PersistenceController.h"
#include "StoreScene.h"
#include "Support/Table.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <functional>
#include <random>

using namespace Qt::StringLiterals;

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
    StoreScene::save(ModelContainer({.path = path}).mainContext(), {testEarthquake(u"a"_s, 10)});
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
        const Table<Prepare, QString> row;
        row("text", file(QByteArray(5000, 'x')), "not a database");
        row("a single byte", file("x"), "not a database");
        row(
            "a folder", [](const QString &path) { QVERIFY(QDir().mkpath(path)); }, "not a file");
        row(
            "a file in place of its folder", [](const QString &path) { write(QFileInfo(path).path(), "text"); },
            "folder cannot be made");
        row("another program's database", foreign, "another program");
        row("another program's database of our version", store("PRAGMA application_id = 7"), "another program");
        row("version one above ours", store("PRAGMA user_version = 2"), "newer version");
        row("our mark without a version", store("PRAGMA user_version = 0"), "another program");

        World world;
        const QString path = world.folder.filePath(u"sound.sqlite"_s);
        makeStore(path, "");
        const QByteArray sound = bytes(path);
        constexpr qsizetype pageBytes = 4096;
        row("header zeroed", file(QByteArray(100, '\0') + sound.mid(100)), "");
        for (qsizetype size = pageBytes; size < sound.size(); size += pageBytes)
            row("cut after " + QByteArray::number(size), file(sound.left(size)), "");
        std::mt19937 engine(1);
        for (const qsizetype from : {0, 16, 28, 40, 100}) {
            QByteArray damaged = sound;
            for (qsizetype i = from; i < pageBytes; ++i)
                damaged[i] = char(engine());
            row("random bytes over the first page from " + QByteArray::number(from), file(damaged), "");
        }
    }

    void whatIsNoStoreIsRefusedAndLeftAlone()
    {
        const auto [prepare, reason] = Table<std::function<void(const QString &)>, QString>::current();
        World world;
        const QString path = world.folder.filePath(u"data/the store.sqlite"_s);
        prepare(path);
        const auto before = contents(world.folder);
        const QString error = openingError(path);
        QVERIFY2(error.contains(path) && error.contains(reason), qUtf8Printable(error));
        QCOMPARE(contents(world.folder), before);
    }

    void aNewerStoreKeepsItsUnfinishedLog()
    {
        World world;
        const QString live = world.folder.filePath(u"live.sqlite"_s);
        const QString path = world.folder.filePath(u"copy.sqlite"_s);
        ModelContainer container({.path = live});
        execute(live, "PRAGMA user_version = 2");
        for (const QString &end : {QString(), u"-wal"_s})
            QVERIFY(QFile::copy(live + end, path + end));
        const QByteArray before = bytes(path) + bytes(path + u"-wal"_s);
        QVERIFY(openingError(path).contains(u"newer version"_s));
        QCOMPARE(bytes(path) + bytes(path + u"-wal"_s), before);
    }

    void anEmptyFileBecomesAStore()
    {
        World world;
        const QString path = world.folder.filePath(u"store.sqlite"_s);
        write(path, {});
        QCOMPARE(openingError(path), QString());
        QCOMPARE(openingError(path), QString());
    }

    void previewHoldsThreeEventsAndNoFile()
    {
        World world;
        ModelContainer &container = PersistenceController::preview().container();
        const auto rows = container.mainContext().fetch({.sort = FetchDescriptor::Sort::dateReverse});
        QCOMPARE(eventIDs(rows), u"es2025prev001 es2025prev002 es2025prev003"_s);
        QVERIFY(rows.at(1).date() == world.clock.now() - std::chrono::hours(2));
        QCOMPARE(rows.at(1).maxIntensity(), std::optional(u"IV"_s));
        QVERIFY(container.mainContext().hasChanges() && ModelContext(container).fetch({}).empty());
        QVERIFY(contents(world.folder).isEmpty() && !QFile::exists(container.location()));
    }
};

QTEST_GUILESS_MAIN(StoreFileTest)
#include "StoreFileTest.moc"
