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
        const Table<Prepare> row;
        row("of a newer version", [](const QString &path) {
            SQLite::Database(path.toStdString(), SQLite::OPEN_READWRITE).exec("PRAGMA user_version = 1000");
        });
        row("on a medium that cannot be written", [](const QString &path) {
            const QString folder = QFileInfo(path).path();
            mount({QStringLiteral("--bind"), folder, folder});
            mount({QStringLiteral("-o"), QStringLiteral("remount,ro,bind"), folder});
        });
    }

    void programSaysWhyAndLeavesTheFileAlone()
    {
        const auto [prepare] = Table<Prepare>::current();
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
        QVERIFY2(said.contains(path.toUtf8()), said);
        QCOMPARE(said.count('\n'), 1);
        QCOMPARE(contents(home.filePath(QStringLiteral("data"))), before);
    }

private:
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
