// SPDX-License-Identifier: GPL-3.0-or-later
#include "LocalInstitute.h"
#include "PageGenerator.h"
#include "Platform/Support/Instant.h"
#include "RunningProgram.h"
#include "Support/PrivateBus.h"
#include "Support/Table.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QFileInfo>
#include <QProcess>
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

/// Takes the one network device of this namespace away, or brings it back.
void setNetwork(const char *state)
{
    const QStringList arguments = {QStringLiteral("link"), QStringLiteral("set"), QStringLiteral("lo"),
                                   QString::fromLatin1(state)};
    QCOMPARE(QProcess::execute(QStringLiteral("ip"), arguments), 0);
}

/// How many packets this namespace has tried to send so far.
int packets()
{
    QFile counters(QStringLiteral("/proc/self/net/snmp"));
    if (!counters.open(QFile::ReadOnly))
        return 0;
    const QByteArrayList lines = counters.readAll().split('\n');
    return lines.value(1).split(' ').value(lines.value(0).split(' ').indexOf("OutRequests")).toInt();
}

qsizetype storedCount(const QTemporaryDir &home)
{
    return std::ranges::count(storedRows(home), '\n');
}
}

Q_DECLARE_METATYPE(LocalInstitute::Certificate)

/// The program and the institute's page, over HTTPS to a server of this machine. Runs in a mount and network namespace
/// of its own.
class InstituteTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyRowIsStoredOnceAndSurvives_data()
    {
        const Table<QByteArray, int> row;
        row("quiet", quietPage(), 56);
        row("swarm", swarmPage(), 1698);
    }

    void everyRowIsStoredOnceAndSurvives()
    {
        const auto [page, rows] = Table<QByteArray, int>::current();
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

        setNetwork("down");
        const int requests = institute.requests();
        {
            const RunningProgram program(home);
            const int before = packets();
            QTRY_VERIFY_WITH_TIMEOUT(packets() > before, patienceMs);
            QVERIFY(program.isRunning());
        }
        QVERIFY(storedRows(home) == stored);
        QCOMPARE(institute.requests(), requests);

        setNetwork("up");
        const QByteArray lastUpdated = RunningProgram::savedLastUpdated(home);
        const RunningProgram program(home);
        QTRY_VERIFY_WITH_TIMEOUT(RunningProgram::savedLastUpdated(home) != lastUpdated, patienceMs);
        QVERIFY(program.isRunning());
        QVERIFY(storedRows(home) == stored);
    }

    void secondStartLeavesTheStoreToTheFirst()
    {
        QTemporaryDir home;
        LocalInstitute institute(LocalInstitute::Certificate::trusted);
        institute.setPage(quietPage());
        const PrivateBus bus;
        RunningProgram first(home, bus.address());
        QTRY_COMPARE_WITH_TIMEOUT(storedCount(home), 56, patienceMs);
        const int requests = institute.requests();
        RunningProgram second(home, bus.address());
        QVERIFY(second.waitForEnd());
        QCOMPARE(second.exitStatus(), 0);
        QVERIFY(first.isRunning());
        QCOMPARE(institute.requests(), requests);
        first.killAtOnce();
        const RunningProgram next(home, bus.address());
        QTRY_VERIFY_WITH_TIMEOUT(institute.requests() > requests, patienceMs);
    }

    void certificateWithAFaultIsRefused_data()
    {
        const Table<LocalInstitute::Certificate> row;
        row("of an unknown authority", LocalInstitute::Certificate::unknownAuthority);
        row("self-signed", LocalInstitute::Certificate::selfSigned);
        row("expired", LocalInstitute::Certificate::expired);
        row("of another host", LocalInstitute::Certificate::otherHost);
    }

    void certificateWithAFaultIsRefused()
    {
        const auto [certificate] = Table<LocalInstitute::Certificate>::current();
        QTemporaryDir home;
        LocalInstitute institute(certificate);
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
