// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/ModelContainer.h"
#include "RunningProgram.h"
#include "Support/Table.h"

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
        const Table<Prepare, QByteArray> row;
        const Prepare makeNewer = [](const QString &path) { execute(path, "PRAGMA user_version = 1000"); };
        row("of a newer version", makeNewer, "newer version");
        const Prepare makeReadOnly = [](const QString &path) {
            // Otherwise SQLite leaves files for the log beside it.
            execute(path, "PRAGMA journal_mode = DELETE");
            mount({QStringLiteral("--bind"), path, path});
            mount({QStringLiteral("-o"), QStringLiteral("remount,ro,bind"), path});
        };
        row("that cannot be written", makeReadOnly, "it cannot be written");
    }

    void programSaysWhyAndLeavesTheFileAlone()
    {
        const auto [prepare, reason] = Table<Prepare, QByteArray>::current();
        QTemporaryDir home;
        const QString path = RunningProgram::storePath(home);
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        std::make_unique<ModelContainer>(ModelContainer::Configuration{.path = path}).reset();
        prepare(path);
        if (QTest::currentTestFailed())
            return;
        const auto before = contents(home.filePath(QStringLiteral("data")));

        RunningProgram program(home);
        QVERIFY(program.waitForEnd());
        QCOMPARE(program.exitStatus(), 1);
        const QByteArray said = program.standardError();
        QVERIFY2(said.startsWith("Failed to create ModelContainer: "), said);
        QVERIFY2(said.contains(path.toUtf8()) && said.contains(reason), said);
        QCOMPARE(said.count('\n'), 1);
        QCOMPARE(contents(home.filePath(QStringLiteral("data"))), before);
    }

private:
    static void execute(const QString &path, const char *sql)
    {
        SQLite::Database(path.toStdString(), SQLite::OPEN_READWRITE).exec(sql);
    }

    static void mount(const QStringList &arguments)
    {
        QCOMPARE(QProcess::execute(QStringLiteral("mount"), arguments), 0);
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
