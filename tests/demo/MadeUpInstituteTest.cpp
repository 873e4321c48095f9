// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/DataSources/IGNDataSource.h"
#include "Core/Models/Region.h"
#include "Core/Networking/HTMLParser.h"
#include "DemoCatalogue.h"
#include "DetouredURLSession.h"
#include "LoopbackInstitute.h"
#include "Platform/Clock/SystemClock.h"
#include "Platform/URLSession/NetworkURLSession.h"
#include "Support/FakeURLSession.h"

#include <QSignalSpy>
#include <QTcpSocket>
#include <QTest>

using namespace std::chrono_literals;

namespace {
constexpr Instant start{std::chrono::sys_days{std::chrono::year{2025} / 3 / 14} + 10h};
}

class MadeUpInstituteTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pageHoldsTenDaysNewestFirst()
    {
        const DemoCatalogue catalogue(1, DemoCatalogue::Pace::quiet, start);
        const QList<ParsedEarthquake> events = HTMLParser::parseTable(catalogue.page());
        QCOMPARE(events.size(), 150);
        for (qsizetype i = 1; i < events.size(); ++i)
            QVERIFY(events[i - 1].date >= events[i].date);
        QVERIFY(events.constFirst().date <= start);
        QVERIFY(events.constLast().date >= start - std::chrono::days(10) - 1s);
        QVERIFY(DemoCatalogue(1, DemoCatalogue::Pace::quiet, start).page() == catalogue.page());
        QVERIFY(DemoCatalogue(2, DemoCatalogue::Pace::quiet, start).page() != catalogue.page());
    }

    void namesFitThePositions()
    {
        for (const ParsedEarthquake &event : PageGenerator(3).ordinary(500, start)) {
            QVERIFY(event.location.size() <= 30);
            QVERIFY(event.latitude > 26 && event.latitude < 30 && event.longitude > -20 && event.longitude < -13);
            const bool isNorthOfArico = event.location == QStringLiteral("N ARICO.ITF");
            QVERIFY(!isNorthOfArico || event.latitude > 28.17);
            const bool isWestOfArico = event.location == QStringLiteral("W ARICO.ITF");
            QVERIFY(!isWestOfArico || event.longitude < -16.49);
        }
    }

    void eventsComeWithTime_data()
    {
        QTest::addColumn<DemoCatalogue::Pace>("pace");
        QTest::addColumn<int>("least");
        QTest::addColumn<int>("most");
        QTest::newRow("quiet: every 90 to 300 s") << DemoCatalogue::Pace::quiet << 12 << 40;
        QTest::newRow("swarm: every 2 to 15 s") << DemoCatalogue::Pace::swarm << 240 << 1800;
    }

    void eventsComeWithTime()
    {
        QFETCH(DemoCatalogue::Pace, pace);
        QFETCH(int, least);
        QFETCH(int, most);
        DemoCatalogue catalogue(1, pace, start);
        QVERIFY(!catalogue.advance(start + 1s));
        QVERIFY(catalogue.advance(start + 1h));
        QVERIFY(!catalogue.advance(start + 1h));
        const auto isNew = [](const ParsedEarthquake &event) { return event.date > start; };
        const auto count = std::count_if(catalogue.events().begin(), catalogue.events().end(), isNew);
        QVERIFY(count >= least && count <= most);
    }

    void oldEventsLeaveThePage()
    {
        DemoCatalogue catalogue(1, DemoCatalogue::Pace::quiet, start);
        catalogue.advance(start + std::chrono::days(11));
        for (const ParsedEarthquake &event : catalogue.events())
            QVERIFY(event.date > start);
    }

    void serverAnswersOnceTheRequestIsWhole()
    {
        LoopbackInstitute institute([] { return QByteArray("página"); });
        QVERIFY(institute.isListening());
        QTcpSocket client;
        client.connectToHost(institute.serverAddress(), institute.serverPort());
        QVERIFY(client.waitForConnected());
        QSignalSpy arrived(&client, &QTcpSocket::disconnected);
        client.write("GET / HTTP/1.1\r\nHost: a\r\n");
        QVERIFY(client.waitForBytesWritten());
        QTRY_VERIFY(institute.findChild<QTcpSocket *>());
        QTRY_VERIFY(institute.findChild<QTcpSocket *>()->bytesAvailable() > 0);
        QCOMPARE(client.bytesAvailable(), 0);
        client.write("\r\n");
        QTRY_COMPARE(arrived.count(), 1);
        const QByteArray answer = client.readAll();
        QVERIFY(answer.startsWith("HTTP/1.1 200 OK\r\n"));
        QVERIFY(answer.contains("\r\nContent-Length: 7\r\n"));
        QVERIFY(answer.endsWith("\r\n\r\npágina"));
    }

    void serverHangsUpOnAnEndlessRequest()
    {
        LoopbackInstitute institute([] { return QByteArray("page"); });
        QTcpSocket client;
        QSignalSpy closed(&client, &QTcpSocket::disconnected);
        client.connectToHost(institute.serverAddress(), institute.serverPort());
        QVERIFY(client.waitForConnected());
        client.write(QByteArray(20000, 'a'));
        QTRY_COMPARE(closed.count(), 1);
        QVERIFY(client.readAll().isEmpty());
    }

    void eventsComeWholeOverTheRealRoad()
    {
        const DemoCatalogue catalogue(1, DemoCatalogue::Pace::quiet, start);
        const LoopbackInstitute institute([&] { return catalogue.page(); });
        SystemClock clock;
        NetworkURLSession network(clock);
        DetouredURLSession session(network, Region::canaryIslands().dataSourceURL, institute.url());
        auto events = IGNDataSource(session).fetchEarthquakes();
        QTRY_VERIFY(events.isFinished());
        QVERIFY(events.result() == catalogue.events());
    }

    void onlyTheOneAddressTakesTheDetour()
    {
        const QUrl from(QStringLiteral("https://example.org/page"));
        const QUrl to(QStringLiteral("http://127.0.0.1:1/"));
        FakeURLSession session;
        session.enqueue("page");
        DetouredURLSession detoured(session, from, to);
        QCOMPARE(detoured.data(from).result().body, QByteArray("page"));
        QVERIFY_EXCEPTION_THROWN(detoured.data(QUrl(QStringLiteral("https://example.org/"))).result(), URLSessionError);
        QVERIFY(session.requests == std::vector{to});
    }
};

QTEST_GUILESS_MAIN(MadeUpInstituteTest)
#include "MadeUpInstituteTest.moc"
