// SPDX-License-Identifier: GPL-3.0-or-later
#include "LocalInstitute.h"
#include "PageGenerator.h"
#include "Platform/Support/Instant.h"
#include "RunningProgram.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QFileInfo>
#include <QTest>

namespace {
constexpr int patienceMs = 60'000;

Instant now()
{
    return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

/// The page of an ordinary ten days.
QByteArray quietPage()
{
    return PageGenerator::page(PageGenerator(1).ordinary(56, now()));
}

/// The page of ten days of swarm.
QByteArray swarmPage()
{
    return PageGenerator::page(PageGenerator(2).swarm(1698, now(), std::chrono::days(10)));
}

/// The stored rows, all their values, as one text; empty while there is no store.
std::string storedRows(const QTemporaryDir &home)
{
    const QString path = RunningProgram::storePath(home);
    if (!QFileInfo::exists(path))
        return {};
    try {
        SQLite::Database store(path.toStdString(), SQLite::OPEN_READONLY);
        SQLite::Statement row(store, "SELECT * FROM earthquake ORDER BY eventID");
        std::string rows;
        while (row.executeStep()) {
            for (int column = 0; column < row.getColumnCount(); ++column)
                rows += row.getColumn(column).getString() + '|';
            rows += '\n';
        }
        return rows;
    } catch (const SQLite::Exception &) {
        return {}; // the program is about to make it
    }
}

qsizetype storedCount(const QTemporaryDir &home)
{
    return std::ranges::count(storedRows(home), '\n');
}
}

/// The program and the institute's page, over HTTPS to a server of this machine. Runs in a mount and network namespace
/// of its own.
class InstituteTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyRowIsStoredOnceAndSurvives_data()
    {
        QTest::addColumn<QByteArray>("page");
        QTest::addColumn<int>("rows");
        QTest::newRow("quiet") << quietPage() << 56;
        QTest::newRow("swarm") << swarmPage() << 1698;
    }

    void everyRowIsStoredOnceAndSurvives()
    {
        QFETCH(QByteArray, page);
        QFETCH(int, rows);
        QTemporaryDir home;
        LocalInstitute institute(LocalInstitute::Certificate::trusted);
        institute.setPage(page);
        {
            RunningProgram program(home);
            QTRY_COMPARE_WITH_TIMEOUT(storedCount(home), rows, patienceMs);
            program.killAtOnce();
        }
        const std::string stored = storedRows(home);
        QCOMPARE(std::ranges::count(stored, '\n'), rows);

        institute.setAnswering(false);
        {
            const RunningProgram program(home);
            const int requests = institute.requests();
            QTRY_VERIFY_WITH_TIMEOUT(institute.requests() > requests, patienceMs);
            QVERIFY(program.isRunning());
        }
        QVERIFY(storedRows(home) == stored);

        institute.setAnswering(true);
        const QByteArray lastUpdated = RunningProgram::savedLastUpdated(home);
        const RunningProgram program(home);
        QTRY_VERIFY_WITH_TIMEOUT(RunningProgram::savedLastUpdated(home) != lastUpdated, patienceMs);
        QVERIFY(program.isRunning());
        QVERIFY(storedRows(home) == stored);
    }

    void certificateOfAStrangerIsRefused()
    {
        QTemporaryDir home;
        LocalInstitute institute(LocalInstitute::Certificate::unknown);
        institute.setPage(quietPage());
        const RunningProgram program(home);
        QTRY_VERIFY_WITH_TIMEOUT(institute.refusals() > 0, patienceMs);
        QVERIFY(program.isRunning());
        QCOMPARE(institute.requests(), 0);
        QCOMPARE(storedCount(home), 0);
    }
};

QTEST_GUILESS_MAIN(InstituteTest)
#include "InstituteTest.moc"
