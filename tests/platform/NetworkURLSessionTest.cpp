// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/URLSession/NetworkURLSession.h"
#include "Platform/Support/Async.h"
#include "Support/FakeClock.h"
#include "Support/FakeURLSession.h"
#include "Support/LoopbackServer.h"
#include "Support/Table.h"

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

/// One request over a session and a clock of its own.
struct Transfer
{
    explicit Transfer(const QUrl &url)
        : outcome(session->data(url))
    {
    }

    bool fails() const
    {
        return QTest::qWaitFor([this] { return outcome.text.startsWith(QLatin1String("failed: ")); });
    }

    CountingClock clock;
    std::unique_ptr<NetworkURLSession> session = std::make_unique<NetworkURLSession>(clock);
    const Outcome outcome;
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

    /// What the program relies on, of the fake and of the real session alike.
    void contract_data()
    {
        const Table<bool> row;
        row("fake", true);
        row("real", false);
    }

    void contract()
    {
        const auto [isFake] = Table<bool>::current();
        FakeClock clock;
        NetworkURLSession real(clock);
        FakeURLSession fake;
        URLSession &session = isFake ? static_cast<URLSession &>(fake) : real;
        m_server.answer(QStringLiteral("/a"), LoopbackServer::message("200 OK", {}, "page"));
        m_server.answer(QStringLiteral("/b"), LoopbackServer::message("404 Not Found", {}, "gone"));
        for (const int status : {200, 200, 404})
            fake.enqueue(status == 200 ? "page" : "gone", status);
        session.data(m_server.url(QStringLiteral("/a"))); // nobody needs to listen
        const Outcome found(session.data(m_server.url(QStringLiteral("/a"))));
        const Outcome missing(session.data(m_server.url(QStringLiteral("/b"))));
        const Outcome nothing(session.data(m_server.url(QStringLiteral("/nothing"))));
        QTRY_COMPARE(QString(found.text + QString::fromUtf8(found.body)), QStringLiteral("200page"));
        QTRY_COMPARE(QString(missing.text + QString::fromUtf8(missing.body)), QStringLiteral("404gone"));
        QTRY_VERIFY(nothing.text.startsWith(QLatin1String("failed: ")) && nothing.text.size() > 15);
    }

    void answerOfAnyStatusIsAResponse_data()
    {
        const Table<QByteArray, QString, QByteArray> row;
        using Server = LoopbackServer;
        row("page", Server::page("hello"), "200", "hello");
        row("no content", Server::message("204 No Content", {}, {}), "204", "");
        row("not modified", Server::message("304 Not Modified", {}, {}), "304", "");
        row("moved to nowhere", Server::message("301 Moved Permanently", "Content-Length: 0\r\n", {}), "301", "");
        row("not found", Server::message("404 Not Found", "Content-Length: 4\r\n", "gone"), "404", "gone");
        row("forbidden", Server::message("401 No", "WWW-Authenticate: Basic realm=\"x\"\r\nContent-Length: 0\r\n", {}),
            "401", "");
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
        row("empty, gzip", Server::message("200 OK", gzipHeaders({}), {}), "200", "");
        const QByteArray limit(NetworkURLSession::bodyLimit, 'a');
        row("as large as can be", Server::page(limit), "200", limit);
        const QByteArray packedLimit = Server::gzip(limit);
        row("as large as can be, gzip", Server::message("200 OK", gzipHeaders(packedLimit), packedLimit), "200", limit);
    }

    void answerOfAnyStatusIsAResponse()
    {
        const auto [bytes, expected, body] = Table<QByteArray, QString, QByteArray>::current();
        m_server.answer(path, bytes);
        Transfer transfer(m_server.url(path));
        QVERIFY(transfer.outcome.text.isEmpty());
        QTRY_VERIFY(!transfer.outcome.text.isEmpty());
        QCOMPARE(transfer.outcome.text, expected);
        QVERIFY(transfer.outcome.body == body);
        QCOMPARE(m_server.requests().size(), size_t(1));
        transfer.clock.settle();
        QCOMPARE(transfer.clock.sleeping(), 0);
    }

    void brokenTransferFails_data()
    {
        const Table<QByteArray> row;
        using Server = LoopbackServer;
        row("nothing", QByteArray());
        row("no HTTP", QByteArray("SSH-2.0-OpenSSH\r\n\r\n"));
        row("cut under its length", Server::message("200 OK", "Content-Length: 10\r\n", "hello"));
        const QByteArray chunked = "Transfer-Encoding: chunked\r\n";
        row("last chunk missing", Server::message("200 OK", chunked, Server::chunk("hello")));
        row("cut in a chunk", Server::message("200 OK", chunked, "a\r\nhello"));
        QByteArray numbers;
        for (int number = 0; number < 1000; ++number)
            numbers += QByteArray::number(number * number);
        const QByteArray packed = Server::gzip(numbers);
        const QByteArray cut = packed.left(packed.size() / 2);
        row("cut gzip", Server::message("200 OK", gzipHeaders(packed), cut));
        row("gzip cut before packing", Server::message("200 OK", gzipHeaders(cut), cut));
        row("gzip that is none", Server::message("200 OK", gzipHeaders("hello"), "hello"));
        row("gzip with a tail", Server::message("200 OK", gzipHeaders(packed + "tail"), packed + "tail"));
        const QByteArray bomb = Server::gzip(QByteArray(NetworkURLSession::bodyLimit, '\0')).repeated(64);
        row("a gigabyte, gzip", Server::message("200 OK", gzipHeaders(bomb), bomb));
        row("17 MiB without a length", Server::message("200 OK", {}, QByteArray(17 * qsizetype{1024} * 1024, 'a')));
        row("redirect to a file", redirectTo(QUrl(QStringLiteral("file:///etc/hostname"))));
        row("redirect to nowhere", redirectTo(QUrl(QStringLiteral("http://127.0.0.1:1/"))));
    }

    void brokenTransferFails()
    {
        const auto [bytes] = Table<QByteArray>::current();
        m_server.answer(path, bytes);
        Transfer transfer(m_server.url(path));
        QVERIFY2(transfer.fails(), qPrintable(transfer.outcome.text));
        QVERIFY(transfer.outcome.text.size() > 15);
        QTRY_COMPARE(m_server.openConnections(), 0);
        QCOMPARE(m_server.requests().size(), size_t(1));
        transfer.clock.settle();
        QCOMPARE(transfer.clock.sleeping(), 0);
    }

    void plainServerMayLeadToASecureOne()
    {
        LoopbackServer plain;
        const QByteArray packed = LoopbackServer::gzip("there");
        plain.answer(path, redirectTo(m_server.url(QStringLiteral("/next"))));
        m_server.answer(QStringLiteral("/next"), LoopbackServer::message("200 OK", gzipHeaders(packed), packed));
        const Transfer transfer(plain.url(path));
        QTRY_COMPARE(transfer.outcome.text, QStringLiteral("200"));
        QCOMPARE(transfer.outcome.body, QByteArray("there"));
    }

    void secureServerMustNotLeadToAPlainOne()
    {
        LoopbackServer plain;
        plain.answer(path, LoopbackServer::page("open to everyone"));
        m_server.answer(path, redirectTo(plain.url(path)));
        Transfer transfer(m_server.url(path));
        QVERIFY(transfer.fails());
        QCOMPARE(plain.requests().size(), size_t(0));
    }

    void redirectLoopEnds()
    {
        m_server.answer(path, redirectTo(m_server.url(path)));
        Transfer transfer(m_server.url(path));
        QVERIFY(transfer.fails());
        QVERIFY(m_server.requests().size() < 30);
    }

    void requestCarriesNothingOfOurOwn()
    {
        m_server.answer(path, LoopbackServer::message("200 OK", "Set-Cookie: a=b\r\nContent-Length: 0\r\n", {}));
        const Transfer transfer(m_server.url(path));
        QTRY_COMPARE(transfer.outcome.text, QStringLiteral("200"));
        const Outcome second(transfer.session->data(m_server.url(path)));
        QTRY_COMPARE(second.text, QStringLiteral("200"));
        const QByteArray sent = m_server.requests().back().toLower();
        for (const char *header : {"\r\ncookie:", "\r\ncache-control:", "\r\nif-", "\r\nauthorization:"})
            QVERIFY2(!sent.contains(header), sent.constData());
    }

    void silenceOfAMinuteEndsATransfer()
    {
        m_server.answer(path, LoopbackServer::message("200 OK", {}, "first"), LoopbackServer::Then::keepOpen);
        Transfer transfer(m_server.url(path));
        // Two waits at the start; one more each for the secure connection, the headers and the first bytes.
        QTRY_COMPARE(transfer.clock.asked, 5);
        transfer.clock.advance(59s);
        m_server.send("second");
        QTRY_COMPARE(transfer.clock.asked, 6);
        transfer.clock.advance(59s);
        QVERIFY(transfer.outcome.text.isEmpty());
        transfer.clock.advance(1s);
        QVERIFY(transfer.outcome.text.contains(QLatin1String("60 seconds")));
        QTRY_COMPARE(m_server.openConnections(), 0);
    }

    void dripEndsAfterFiveMinutes()
    {
        m_server.answer(path, LoopbackServer::message("200 OK", {}, "first"), LoopbackServer::Then::keepOpen);
        Transfer transfer(m_server.url(path));
        QTRY_COMPARE(transfer.clock.asked, 5);
        for (int drop = 1; drop <= 5; ++drop) {
            transfer.clock.advance(50s);
            m_server.send("drop");
            QTRY_COMPARE(transfer.clock.asked, 5 + drop);
        }
        transfer.clock.advance(49s);
        QVERIFY(transfer.outcome.text.isEmpty());
        transfer.clock.advance(1s);
        QVERIFY(transfer.outcome.text.contains(QLatin1String("300 seconds")));
    }

    void serverThatSaysNothingAtAllIsGivenUp()
    {
        m_server.answer(path, {}, LoopbackServer::Then::keepOpen);
        Transfer transfer(m_server.url(path));
        QTRY_COMPARE(m_server.requests().size(), size_t(1));
        QTRY_COMPARE(transfer.clock.asked, 3);
        transfer.clock.advance(60s);
        QVERIFY(transfer.outcome.text.contains(QLatin1String("60 seconds")));
    }

    void loopTurnsAllThroughTheUnpacking()
    {
        const QByteArray packed = LoopbackServer::gzip(QByteArray(NetworkURLSession::bodyLimit, '\0'));
        m_server.answer(path, LoopbackServer::message("200 OK", gzipHeaders(packed), packed));
        Transfer transfer(m_server.url(path));
        // Once all has arrived nothing but the unpacking keeps the answer back.
        int arrivals = 0;
        int turns = 0;
        const std::function<void()> turn = [&] {
            turns = std::exchange(arrivals, transfer.clock.asked) == transfer.clock.asked ? turns + 1 : 0;
            if (transfer.outcome.text.isEmpty())
                QMetaObject::invokeMethod(this, turn, Qt::QueuedConnection);
        };
        turn();
        QTRY_COMPARE(transfer.outcome.text, QStringLiteral("200"));
        QCOMPARE(transfer.outcome.body.size(), NetworkURLSession::bodyLimit);
        QVERIFY2(turns > 200, qPrintable(QString::number(turns)));
    }

    void endOfTheSessionCancels()
    {
        m_server.answer(path, LoopbackServer::message("200 OK", {}, "first"), LoopbackServer::Then::keepOpen);
        Transfer running(m_server.url(path));
        QTRY_COMPARE(running.clock.asked, 5);
        const Outcome starting(running.session->data(m_server.url(path)));
        running.session.reset();
        QCOMPARE(running.outcome.text, QStringLiteral("failed: The transfer was cancelled."));
        QCOMPARE(starting.text, QStringLiteral("failed: The transfer was cancelled."));
        running.clock.settle();
        QCOMPARE(running.clock.sleeping(), 0);
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
