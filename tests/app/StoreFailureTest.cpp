// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/ModelContainer.h"
#include "RunningProgram.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QTest>

using Prepare = void (*)(const QString &storePath);

/// The program with a store that it cannot open. Runs in a mount namespace of its own.
class StoreFailureTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void programSaysWhyAndLeavesTheFileAlone_data()
    {
        QTest::addColumn<Prepare>("prepare");
        QTest::newRow("a folder in its place") << +[](const QString &path) { QVERIFY(QDir().mkpath(path)); };
        QTest::newRow("no database") << +[](const QString &path) { write(path, QByteArray(20'000, '?')); };
        QTest::newRow("a database cut off in its header")
            << +[](const QString &path) { write(path, QByteArrayLiteral("SQLite format 3")); };
        QTest::newRow("of a newer version") << +[](const QString &path) {
            makeFolder(path);
            const ModelContainer made({.path = path});
            SQLite::Database(path.toStdString(), SQLite::OPEN_READWRITE).exec("PRAGMA user_version = 1000");
        };
        QTest::newRow("another program's") << +[](const QString &path) {
            makeFolder(path);
            SQLite::Database database(path.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
            database.exec("CREATE TABLE recipes (title TEXT); PRAGMA user_version = 7");
        };
        QTest::newRow("on a medium that cannot be written") << +[](const QString &path) {
            makeFolder(path);
            {
                const ModelContainer made({.path = path});
            }
            const QString folder = QFileInfo(path).path();
            QCOMPARE(QProcess::execute(QStringLiteral("mount"), {QStringLiteral("--bind"), folder, folder}), 0);
            QCOMPARE(QProcess::execute(QStringLiteral("mount"),
                                       {QStringLiteral("-o"), QStringLiteral("remount,ro,bind"), folder}),
                     0);
        };
        QTest::newRow("a folder that cannot be made")
            << +[](const QString &path) { write(QFileInfo(path).path(), QByteArrayLiteral("a file")); };
    }

    void programSaysWhyAndLeavesTheFileAlone()
    {
        QFETCH(Prepare, prepare);
        QTemporaryDir home;
        const QString path = RunningProgram::storePath(home);
        prepare(path);
        if (QTest::currentTestFailed())
            return;
        const auto before = contents(home.filePath(QStringLiteral("data")));

        RunningProgram program(home);
        QVERIFY(program.waitForEnd());
        QCOMPARE(program.exitStatus(), 1);
        const QByteArray said = program.standardError();
        QVERIFY2(said.startsWith("Failed to create ModelContainer: "), said);
        QVERIFY2(said.contains(path.toUtf8()), said);
        QCOMPARE(said.count('\n'), 1);
        QCOMPARE(contents(home.filePath(QStringLiteral("data"))), before);
    }

private:
    static void makeFolder(const QString &path) { QVERIFY(QDir().mkpath(QFileInfo(path).path())); }

    static void write(const QString &path, const QByteArray &bytes)
    {
        makeFolder(path);
        QFile file(path);
        QVERIFY(file.open(QFile::WriteOnly));
        QCOMPARE(file.write(bytes), qint64(bytes.size()));
    }

    /// Every file and folder below `root`, with the files' bytes.
    static QMap<QString, QByteArray> contents(const QString &root)
    {
        QMap<QString, QByteArray> found;
        QDirIterator entries(root, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                             QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            QFile file(entries.next());
            found.insert(file.fileName(), file.open(QFile::ReadOnly) ? file.readAll() : QByteArrayLiteral("a folder"));
        }
        return found;
    }
};

QTEST_GUILESS_MAIN(StoreFailureTest)
#include "StoreFailureTest.moc"
