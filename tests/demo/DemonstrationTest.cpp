// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"

#include <QDirIterator>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

class DemonstrationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// The whole program: it fetches the made-up page, stores it, and leaves nothing behind when it is told to end.
    void storesTheMadeUpPageAndForgetsIt()
    {
        const QTemporaryDir folder;
        QProcess demo;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        for (const char *variable : {"TMPDIR", "HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME"})
            environment.insert(QLatin1String(variable), folder.path());
        demo.setProcessEnvironment(environment);
        demo.start(QStringLiteral(DEMO_PROGRAM), QStringList());
        QTRY_VERIFY_WITH_TIMEOUT(storedIn(folder.path()) >= 150, 30000);
        demo.terminate();
        QVERIFY(demo.waitForFinished());
        QCOMPARE(demo.exitStatus(), QProcess::NormalExit);
        QCOMPARE(demo.exitCode(), 0);
        QCOMPARE(storePath(folder.path()), QString());
    }

private:
    static QString storePath(const QString &folder)
    {
        QDirIterator files(folder, {QStringLiteral("*.sqlite")}, QDir::Files, QDirIterator::Subdirectories);
        return files.hasNext() ? files.next() : QString();
    }

    static qint64 storedIn(const QString &folder)
    {
        const QString path = storePath(folder);
        if (path.isEmpty())
            return 0;
        try {
            ModelContainer container({.path = path});
            return container.mainContext().fetchCount({});
        } catch (const StoreError &) {
            return 0; // just being made
        }
    }
};

QTEST_GUILESS_MAIN(DemonstrationTest)
#include "DemonstrationTest.moc"
