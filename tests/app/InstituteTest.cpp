// SPDX-License-Identifier: GPL-3.0-or-later
#include "LocalInstitute.h"
#include "PageGenerator.h"
#include "Platform/Clock/SystemClock.h"
#include "RunningProgram.h"
#include "Support/Table.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
constexpr int patienceMs = 60'000;

/// The stored rows, all their values, as one text, the last stored at its end; empty while there is no store.
std::string storedRows(const QTemporaryDir &home)
{
    try {
        SQLite::Database store(RunningProgram::storePath(home).toStdString(), SQLite::OPEN_READONLY);
        SQLite::Statement row(store, "SELECT * FROM earthquake ORDER BY rowid");
        std::string rows;
        while (row.executeStep()) {
            for (int column = 0; column < row.getColumnCount(); ++column)
                rows += row.getColumn(column).getString() + '|';
            rows += '\n';
        }
        return rows;
    } catch (const SQLite::Exception &) {
        return {}; // the program has not made it yet
    }
}

/// Takes the one network device of this namespace away, or brings it back.
void setNetwork(const QString &state)
{
    QCOMPARE(QProcess::execute(u"ip"_s, {u"link"_s, u"set"_s, u"lo"_s, state}), 0);
}

/// How many packets this namespace has tried to send so far.
int packets()
{
    QFile counters(u"/proc/self/net/snmp"_s);
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
    void everyRowIsStoredOnceAndSurvives()
    {
        QTemporaryDir home;
        LocalInstitute institute(LocalInstitute::Certificate::trusted);
        QList<ParsedEarthquake> rows = PageGenerator(2).swarm(1698, m_clock.now(), std::chrono::days(10));
        institute.setPage(PageGenerator::page(rows));
        {
            RunningProgram program(home);
            QTRY_COMPARE_WITH_TIMEOUT(storedCount(home), 1698, patienceMs);
            program.killAtOnce();
        }
        const std::string stored = storedRows(home);
        QCOMPARE(std::ranges::count(stored, '\n'), 1698);

        setNetwork(u"down"_s);
        const int requests = institute.requests();
        {
            const RunningProgram program(home);
            const int before = packets();
            QTRY_VERIFY_WITH_TIMEOUT(packets() > before, patienceMs);
            QVERIFY(program.isRunning());
        }
        QVERIFY(storedRows(home) == stored);
        QCOMPARE(institute.requests(), requests);

        setNetwork(u"up"_s);
        rows.prepend(PageGenerator(3).swarmEvent(m_clock.now()));
        institute.setPage(PageGenerator::page(rows));
        const RunningProgram program(home);
        QTRY_COMPARE_WITH_TIMEOUT(storedCount(home), 1699, patienceMs);
        QVERIFY(program.isRunning());
        QVERIFY(storedRows(home).starts_with(stored));
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
        const RunningProgram program(home);
        QTRY_VERIFY_WITH_TIMEOUT(institute.refusals() > 0, patienceMs);
        QVERIFY(program.isRunning());
        QCOMPARE(institute.requests(), 0);
        QCOMPARE(storedCount(home), 0);
    }

private:
    const SystemClock m_clock;
};

QTEST_GUILESS_MAIN(InstituteTest)
#include "InstituteTest.moc"
