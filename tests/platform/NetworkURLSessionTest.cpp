// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/URLSession/NetworkURLSession.h"
#include "Platform/Support/Async.h"
#include "Support/FakeClock.h"
#include "Support/LoopbackServer.h"

#include <QNetworkProxyFactory>
#include <QSslConfiguration>
#include <QTest>

using namespace std::chrono_literals;

namespace {
/// Counts the waits that are asked for: one more for every sign of life from the server.
class CountingClock : public FakeClock
{
public:
    SleepId sleep(std::chrono::milliseconds length, std::function<void()> wake) override
    {
        ++asked;
        return FakeClock::sleep(length, std::move(wake));
    }

    int asked = 0;
};

/// What became of a transfer: "200 body", or "failed: " and the reason.
class Outcome : public QObject
{
public:
    explicit Outcome(const QFuture<URLResponse> &future)
    {
        whenFinished(future, this, [this](const QFuture<URLResponse> &ended) {
            try {
                const URLResponse response = ended.result();
                body = response.body;
                text = response.statusCode ? QString::number(*response.statusCode) : QStringLiteral("no status");
            } catch (const URLSessionError &error) {
                text = QStringLiteral("failed: ") + error.localizedDescription();
            } catch (const std::exception &error) {
                text = QStringLiteral("unexpected: ") + QString::fromUtf8(error.what());
            }
        });
    }

    QString text;
    QByteArray body;
};

const QString path = QStringLiteral("/page");

QByteArray gzipHeaders(const QByteArray &packed)
{
    return "Content-Encoding: gzip\r\nContent-Length: " + QByteArray::number(packed.size()) + "\r\n";
}

QByteArray redirectTo(const QUrl &url)
{
    return LoopbackServer::message("302 Found", "Content-Length: 0\r\nLocation: " + url.toEncoded() + "\r\n", {});
}
}

class NetworkURLSessionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QNetworkProxyFactory::setUseSystemConfiguration(false);
        // What the machine's store is to the program, this one certificate is to the test.
        QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
        trusting.setCaCertificates({m_server.certificate()});
        QSslConfiguration::setDefaultConfiguration(trusting);
    }

    void init() { m_server.reset(); }

    void answerOfAnyStatusIsAResponse_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("body");
        const auto row = [](const char *name, const QByteArray &bytes, const char *text, const QByteArray &body) {
            QTest::newRow(name) << bytes << QString::fromLatin1(text) << body;
        };
        using Server = LoopbackServer;
        row("page", Server::page("hello"), "200", "hello");
        row("empty page", Server::page(""), "200", "");
        row("no content", Server::message("204 No Content", {}, {}), "204", "");
        row("not modified", Server::message("304 Not Modified", {}, {}), "304", "");
        row("not found", Server::message("404 Not Found", "Content-Length: 4\r\n", "gone"), "404", "gone");
        row("too many requests", Server::message("429 Later", "Content-Length: 2\r\n", "no"), "429", "no");
        row("teapot", Server::message("418 Teapot", "Content-Length: 3\r\n", "tea"), "418", "tea");
        row("forbidden", Server::message("401 No", "WWW-Authenticate: Basic realm=\"x\"\r\nContent-Length: 0\r\n", {}),
            "401", "");
        row("unavailable", Server::message("503 Busy", "Retry-After: 1\r\nContent-Length: 0\r\n", {}), "503", "");
        row("server error", Server::message("500 Oh", "Content-Length: 2\r\n", "no"), "500", "no");
        row("without a length", Server::message("200 OK", {}, "hello"), "200", "hello");
        row("chunked",
            Server::message("200 OK", "Transfer-Encoding: chunked\r\n",
                            Server::chunk("hel") + Server::chunk("lo") + Server::chunk({})),
            "200", "hello");
        const QByteArray packed = Server::gzip("hello");
        row("gzip", Server::message("200 OK", gzipHeaders(packed), packed), "200", "hello");
        row("gzip, chunked",
            Server::message("200 OK", "Content-Encoding: gzip\r\nTransfer-Encoding: chunked\r\n",
                            Server::chunk(packed.left(9)) + Server::chunk(packed.mid(9)) + Server::chunk({})),
            "200", "hello");
        row("gzip in two parts",
            Server::message("200 OK", "Content-Encoding: X-GZIP\r\n", packed + Server::gzip(" world")), "200",
            "hello world");
        row("not modified, gzip", Server::message("304 Not Modified", "Content-Encoding: gzip\r\n", {}), "304", "");
        row("empty, gzip", Server::message("200 OK", gzipHeaders({}), {}), "200", "");
        const QByteArray limit(NetworkURLSession::bodyLimit, 'a');
        row("as large as can be", Server::page(limit), "200", limit);
        const QByteArray packedLimit = Server::gzip(limit);
        row("as large as can be, gzip", Server::message("200 OK", gzipHeaders(packedLimit), packedLimit), "200", limit);
    }

    void answerOfAnyStatusIsAResponse()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, body);
        m_server.answer(path, bytes);
        FakeClock clock;
        NetworkURLSession session(clock);
        const Outcome outcome(session.data(m_server.url(path)));
        QVERIFY(outcome.text.isEmpty());
        QTRY_VERIFY(!outcome.text.isEmpty());
        QTEST(outcome.text, "text");
        QVERIFY(outcome.body == body);
        QCOMPARE(m_server.requests().size(), size_t(1));
        clock.settle();
        QCOMPARE(clock.sleeping(), 0);
    }

    void brokenTransferFails_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        using Server = LoopbackServer;
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("cut headers") << QByteArray("HTTP/1.1 200 OK\r\nContent-Le");
        QTest::newRow("no HTTP") << QByteArray("SSH-2.0-OpenSSH\r\n\r\n");
        QTest::newRow("cut under its length") << Server::message("200 OK", "Content-Length: 10\r\n", "hello");
        QTest::newRow("cut 404") << Server::message("404 Not Found", "Content-Length: 10\r\n", "hello");
        QTest::newRow("nothing under its length") << Server::message("200 OK", "Content-Length: 10\r\n", {});
        const QByteArray chunked = "Transfer-Encoding: chunked\r\n";
        QTest::newRow("last chunk missing") << Server::message("200 OK", chunked, Server::chunk("hello"));
        QTest::newRow("cut in a chunk") << Server::message("200 OK", chunked, "a\r\nhello");
        QTest::newRow("cut in a chunk's size") << Server::message("200 OK", chunked, Server::chunk("hello") + "1");
        QByteArray numbers;
        for (int number = 0; number < 1000; ++number)
            numbers += QByteArray::number(number * number);
        const QByteArray packed = Server::gzip(numbers);
        const QByteArray cut = packed.left(packed.size() / 2);
        QTest::newRow("cut gzip") << Server::message("200 OK", gzipHeaders(packed), cut);
        QTest::newRow("gzip cut before packing") << Server::message("200 OK", gzipHeaders(cut), cut);
        QTest::newRow("gzip without a length, cut") << Server::message("200 OK", "Content-Encoding: gzip\r\n", cut);
        QTest::newRow("gzip that is none") << Server::message("200 OK", gzipHeaders("hello"), "hello");
        QTest::newRow("gzip with a tail") << Server::message("200 OK", gzipHeaders(packed + "tail"), packed + "tail");
        const QByteArray packed17 = Server::gzip(QByteArray(17 * 1024 * 1024, 'a'));
        QTest::newRow("17 MiB, gzip") << Server::message("200 OK", gzipHeaders(packed17), packed17);
        const QByteArray bomb = Server::gzip(QByteArray(NetworkURLSession::bodyLimit, '\0')).repeated(64);
        QTest::newRow("a gigabyte, gzip") << Server::message("200 OK", gzipHeaders(bomb), bomb);
        QTest::newRow("100 MB") << Server::page(QByteArray(100'000'000, 'a'));
        QTest::newRow("17 MiB without a length") << Server::message("200 OK", {}, QByteArray(17 * 1024 * 1024, 'a'));
        QTest::newRow("redirect to a file") << redirectTo(QUrl(QStringLiteral("file:///etc/hostname")));
        QTest::newRow("redirect to nowhere") << redirectTo(QUrl(QStringLiteral("http://127.0.0.1:1/")));
    }

    void brokenTransferFails()
    {
        QFETCH(QByteArray, bytes);
        m_server.answer(path, bytes);
        FakeClock clock;
        NetworkURLSession session(clock);
        const Outcome outcome(session.data(m_server.url(path)));
        QTRY_VERIFY(!outcome.text.isEmpty());
        QVERIFY2(outcome.text.startsWith(QLatin1String("failed: ")), qPrintable(outcome.text));
        QVERIFY(outcome.text.size() > 15);
        QTRY_COMPARE(m_server.openConnections(), 0);
        QCOMPARE(m_server.requests().size(), size_t(1));
        clock.settle();
        QCOMPARE(clock.sleeping(), 0);
    }

    void redirectsAreFollowed()
    {
        const QByteArray packed = LoopbackServer::gzip("there");
        m_server.answer(path, redirectTo(m_server.url(QStringLiteral("/next"))));
        m_server.answer(QStringLiteral("/next"), LoopbackServer::message("200 OK", gzipHeaders(packed), packed));
        FakeClock clock;
        NetworkURLSession session(clock);
        const Outcome outcome(session.data(m_server.url(path)));
        QTRY_COMPARE(outcome.text, QStringLiteral("200"));
        QCOMPARE(outcome.body, QByteArray("there"));
    }

    void plainServerMayLeadToASecureOne()
    {
        LoopbackServer plain;
        plain.answer(path, redirectTo(m_server.url(path)));
        m_server.answer(path, LoopbackServer::page("secure"));
        FakeClock clock;
        NetworkURLSession session(clock);
        const Outcome outcome(session.data(plain.url(path)));
        QTRY_COMPARE(outcome.text, QStringLiteral("200"));
        QCOMPARE(outcome.body, QByteArray("secure"));
    }

    void secureServerMustNotLeadToAPlainOne()
    {
        LoopbackServer plain;
        plain.answer(path, LoopbackServer::page("open to everyone"));
        m_server.answer(path, redirectTo(plain.url(path)));
        FakeClock clock;
        NetworkURLSession session(clock);
        const Outcome outcome(session.data(m_server.url(path)));
        QTRY_VERIFY(outcome.text.startsWith(QLatin1String("failed: ")));
        QCOMPARE(plain.requests().size(), size_t(0));
    }

    void redirectLoopEnds()
    {
        m_server.answer(path, redirectTo(m_server.url(path)));
        FakeClock clock;
        NetworkURLSession session(clock);
        const Outcome outcome(session.data(m_server.url(path)));
        QTRY_VERIFY(outcome.text.startsWith(QLatin1String("failed: ")));
        QVERIFY(m_server.requests().size() < 30);
    }

    void unknownCertificateIsRefused()
    {
        LoopbackServer stranger(LoopbackServer::Security::selfSigned);
        stranger.answer(path, LoopbackServer::page("hello"));
        FakeClock clock;
        NetworkURLSession session(clock);
        const Outcome outcome(session.data(stranger.url(path)));
        QTRY_VERIFY(outcome.text.startsWith(QLatin1String("failed: ")));
        QCOMPARE(stranger.requests().size(), size_t(0));
    }

    void requestCarriesNothingOfOurOwn()
    {
        m_server.answer(path, LoopbackServer::message("200 OK", "Set-Cookie: a=b\r\nContent-Length: 0\r\n", {}));
        FakeClock clock;
        NetworkURLSession session(clock);
        for (size_t request = 0; request < 2; ++request) {
            const Outcome outcome(session.data(m_server.url(path)));
            QTRY_COMPARE(outcome.text, QStringLiteral("200"));
            const QByteArray sent = m_server.requests().at(request).toLower();
            for (const char *header : {"\r\ncookie:", "\r\ncache-control:", "\r\nif-", "\r\nauthorization:"})
                QVERIFY2(!sent.contains(header), sent.constData());
        }
    }

    void silenceOfAMinuteEndsATransfer()
    {
        m_server.answer(path, LoopbackServer::message("200 OK", {}, "first"), LoopbackServer::Then::keepOpen);
        CountingClock clock;
        NetworkURLSession session(clock);
        const Outcome outcome(session.data(m_server.url(path)));
        // Two waits at the start; one more each for the secure connection, the headers and the first bytes.
        QTRY_COMPARE(clock.asked, 5);
        clock.advance(59s);
        m_server.send("second");
        QTRY_COMPARE(clock.asked, 6);
        clock.advance(59s);
        QVERIFY(outcome.text.isEmpty());
        clock.advance(1s);
        QVERIFY(outcome.text.contains(QLatin1String("60 seconds")));
        QTRY_COMPARE(m_server.openConnections(), 0);
    }

    void dripEndsAfterFiveMinutes()
    {
        m_server.answer(path, LoopbackServer::message("200 OK", {}, "first"), LoopbackServer::Then::keepOpen);
        CountingClock clock;
        NetworkURLSession session(clock);
        const Outcome outcome(session.data(m_server.url(path)));
        QTRY_COMPARE(clock.asked, 5);
        for (int drop = 1; drop <= 5; ++drop) {
            clock.advance(50s);
            m_server.send("drop");
            QTRY_COMPARE(clock.asked, 5 + drop);
        }
        clock.advance(49s);
        QVERIFY(outcome.text.isEmpty());
        clock.advance(1s);
        QVERIFY(outcome.text.contains(QLatin1String("300 seconds")));
    }

    void serverThatSaysNothingAtAllIsGivenUp()
    {
        m_server.answer(path, {}, LoopbackServer::Then::keepOpen);
        CountingClock clock;
        NetworkURLSession session(clock);
        const Outcome outcome(session.data(m_server.url(path)));
        QTRY_COMPARE(m_server.requests().size(), size_t(1));
        QTRY_COMPARE(clock.asked, 3);
        clock.advance(60s);
        QVERIFY(outcome.text.contains(QLatin1String("60 seconds")));
    }

    void loopTurnsAllThroughATransfer()
    {
        m_server.answer(path, LoopbackServer::page(QByteArray(NetworkURLSession::bodyLimit, 'a')));
        FakeClock clock;
        NetworkURLSession session(clock);
        const Outcome outcome(session.data(m_server.url(path)));
        QTRY_COMPARE(m_server.requests().size(), size_t(1));
        // What is posted now is delivered in the next turn. Of the body no more than Qt reads ahead comes in one.
        int turns = 0;
        const std::function<void()> turn = [&] {
            ++turns;
            if (outcome.text.isEmpty())
                QMetaObject::invokeMethod(this, turn, Qt::QueuedConnection);
        };
        turn();
        QTRY_COMPARE(outcome.text, QStringLiteral("200"));
        QVERIFY2(turns > 200, qPrintable(QString::number(turns)));
    }

    void loopTurnsAllThroughTheUnpacking()
    {
        const QByteArray packed = LoopbackServer::gzip(QByteArray(NetworkURLSession::bodyLimit, '\0'));
        m_server.answer(path, LoopbackServer::message("200 OK", gzipHeaders(packed), packed));
        CountingClock clock;
        NetworkURLSession session(clock);
        const Outcome outcome(session.data(m_server.url(path)));
        // Once all has arrived nothing but the unpacking keeps the answer back.
        int arrivals = 0;
        int turns = 0;
        const std::function<void()> turn = [&] {
            turns = std::exchange(arrivals, clock.asked) == clock.asked ? turns + 1 : 0;
            if (outcome.text.isEmpty())
                QMetaObject::invokeMethod(this, turn, Qt::QueuedConnection);
        };
        turn();
        QTRY_COMPARE(outcome.text, QStringLiteral("200"));
        QCOMPARE(outcome.body.size(), NetworkURLSession::bodyLimit);
        QVERIFY2(turns > 200, qPrintable(QString::number(turns)));
    }

    void endOfTheSessionCancels()
    {
        m_server.answer(path, LoopbackServer::message("200 OK", {}, "first"), LoopbackServer::Then::keepOpen);
        CountingClock clock;
        auto session = std::make_unique<NetworkURLSession>(clock);
        const Outcome running(session->data(m_server.url(path)));
        QTRY_COMPARE(clock.asked, 5);
        const Outcome starting(session->data(m_server.url(path)));
        session.reset();
        QCOMPARE(running.text, QStringLiteral("failed: The transfer was cancelled."));
        QCOMPARE(starting.text, QStringLiteral("failed: The transfer was cancelled."));
        clock.settle();
        QCOMPARE(clock.sleeping(), 0);
    }

    void consumerMayEndTheSession()
    {
        m_server.answer(path, LoopbackServer::page("hello"));
        FakeClock clock;
        auto session = std::make_unique<NetworkURLSession>(clock);
        whenFinished(session->data(m_server.url(path)), this,
                     [&session](const QFuture<URLResponse> &) { session.reset(); });
        QTRY_VERIFY(!session);
    }

private:
    LoopbackServer m_server{LoopbackServer::Security::selfSigned};
};

QTEST_GUILESS_MAIN(NetworkURLSessionTest)
#include "NetworkURLSessionTest.moc"
