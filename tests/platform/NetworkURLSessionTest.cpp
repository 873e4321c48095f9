// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/URLSession/NetworkURLSession.h"
#include "Support/FakeClock.h"
#include "Support/FakeURLSession.h"
#include "Support/LoopbackServer.h"
#include "Support/Table.h"

#include <QDir>
#include <QNetworkProxyFactory>
#include <QSslConfiguration>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Server = LoopbackServer;

namespace {
/// What became of a transfer: its status, or "failed: " and the reason; empty while it is under way.
QString outcome(const QFuture<URLResponse> &transfer)
{
    if (!transfer.isFinished())
        return {};
    try {
        const std::optional<int> status = transfer.result().statusCode;
        return status ? QString::number(*status) : u"no status"_s;
    } catch (const URLSessionError &error) {
        return u"failed: "_s + error.localizedDescription();
    }
}

/// One request over a session and a clock of its own.
struct Transfer
{
    explicit Transfer(const QUrl &url)
        : answer(session->data(url))
    {
    }

    QString text() const { return outcome(answer); }
    QByteArray body() const { return answer.result().body; }
    bool fails() const
    {
        return QTest::qWaitFor([this] { return text().startsWith(u"failed: "); });
    }

    FakeClock clock;
    std::unique_ptr<NetworkURLSession> session = std::make_unique<NetworkURLSession>(clock);
    const QFuture<URLResponse> answer;
};

const QString path = u"/page"_s;

const QByteArray firstPart = Server::message("200 OK", {}, "first");

QByteArray gzipHeaders(const QByteArray &packed)
{
    return "Content-Encoding: gzip\r\nContent-Length: " + QByteArray::number(packed.size()) + "\r\n";
}

/// An answer with `body` packed.
QByteArray packedPage(const QByteArray &body)
{
    const QByteArray packed = Server::gzip(body);
    return Server::message("200 OK", gzipHeaders(packed), packed);
}

QByteArray redirectTo(const QUrl &url)
{
    return Server::message("302 Found", "Content-Length: 0\r\nLocation: " + url.toEncoded() + "\r\n", {});
}
}

class NetworkURLSessionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_threadsBefore = threads();
        QNetworkProxyFactory::setUseSystemConfiguration(false);
        // What the machine's store is to the program, this one certificate is to the test.
        QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
        trusting.setCaCertificates({m_security.localCertificate()});
        QSslConfiguration::setDefaultConfiguration(trusting);
    }

    void init() { m_server.reset(); }

    /// What a thread of the network has still to free when the program ends would count as lost.
    void cleanupTestCase() { QTRY_COMPARE(threads(), m_threadsBefore); }

    /// What the program relies on, of the fake and of the real session alike.
    void transfersEndByThemselvesOrWithTheSession_data()
    {
        const Table<bool> row;
        row("fake", true);
        row("real", false);
    }

    void transfersEndByThemselvesOrWithTheSession()
    {
        const auto [isFake] = Table<bool>::current();
        FakeClock clock;
        auto fake = std::make_unique<FakeURLSession>();
        auto real = std::make_unique<NetworkURLSession>(clock);
        URLSession &session = isFake ? static_cast<URLSession &>(*fake) : *real;
        m_server.answer(u"/a"_s, Server::page("page"));
        m_server.answer(u"/b"_s, Server::message("404 Not Found", {}, "gone"));
        m_server.answer(u"/held"_s, firstPart, Server::Then::keepOpen);
        fake->enqueue("page");
        fake->enqueue("page");
        fake->enqueue("gone", 404);
        session.data(m_server.url(u"/a"_s)); // nobody needs to listen
        const QFuture<URLResponse> found = session.data(m_server.url(u"/a"_s));
        const QFuture<URLResponse> missing = session.data(m_server.url(u"/b"_s));
        const QFuture<URLResponse> nothing = session.data(m_server.url(u"/nothing"_s));
        QTRY_COMPARE(outcome(found), u"200"_s);
        QCOMPARE(found.result().body, QByteArray("page"));
        QTRY_COMPARE(outcome(missing), u"404"_s);
        QCOMPARE(missing.result().body, QByteArray("gone"));
        QTRY_VERIFY(outcome(nothing).startsWith(u"failed: ") && outcome(nothing).size() > 15);

        fake->holdsAnswers = true;
        fake->enqueue("never released");
        const QFuture<URLResponse> held = session.data(m_server.url(u"/held"_s));
        QVERIFY(!held.isFinished());
        fake.reset();
        real.reset();
        QVERIFY(held.isFinished() && outcome(held).startsWith(u"failed: "));
    }

    void answerOfAnyStatusIsAResponse_data()
    {
        const Table<QByteArray, QString, QByteArray> row;
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
        row("gzip", packedPage("hello"), "200", "hello");
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
        row("as large as can be, gzip", packedPage(limit), "200", limit);
    }

    void answerOfAnyStatusIsAResponse()
    {
        const auto [bytes, expected, body] = Table<QByteArray, QString, QByteArray>::current();
        m_server.answer(path, bytes);
        Transfer transfer(m_server.url(path));
        QVERIFY(transfer.text().isEmpty());
        QTRY_VERIFY(!transfer.text().isEmpty());
        QCOMPARE(transfer.text(), expected);
        QVERIFY(transfer.body() == body);
        QCOMPARE(m_server.requests().size(), size_t(1));
        transfer.clock.settle();
        QCOMPARE(transfer.clock.sleeping(), 0);
    }

    void brokenTransferFails_data()
    {
        const Table<QByteArray> row;
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
        row("redirect to a file", redirectTo(QUrl(u"file:///etc/hostname"_s)));
        row("redirect to nowhere", redirectTo(QUrl(u"http://127.0.0.1:1/"_s)));
    }

    void brokenTransferFails()
    {
        const auto [bytes] = Table<QByteArray>::current();
        m_server.answer(path, bytes);
        Transfer transfer(m_server.url(path));
        QVERIFY2(transfer.fails(), qPrintable(transfer.text()));
        QVERIFY(transfer.text().size() > 15);
        QTRY_COMPARE(m_server.openConnections(), 0);
        QCOMPARE(m_server.requests().size(), size_t(1));
        transfer.clock.settle();
        QCOMPARE(transfer.clock.sleeping(), 0);
    }

    void redirectsLeadToSecureServersAlone()
    {
        Server plain;
        plain.answer(u"/to-secure"_s, redirectTo(m_server.url(path)));
        m_server.answer(path, packedPage("there"));
        const Transfer safer(plain.url(u"/to-secure"_s));
        QTRY_COMPARE(safer.text(), u"200"_s);
        QCOMPARE(safer.body(), QByteArray("there"));

        plain.reset();
        plain.answer(path, Server::page("open to everyone"));
        m_server.answer(path, redirectTo(plain.url(path)));
        QVERIFY(Transfer(m_server.url(path)).fails());
        QCOMPARE(plain.requests().size(), size_t(0));

        m_server.reset();
        m_server.answer(path, redirectTo(m_server.url(path)));
        QVERIFY(Transfer(m_server.url(path)).fails());
        QVERIFY2(m_server.requests().size() < 30, "a loop goes on");
    }

    void requestCarriesNothingOfOurOwn()
    {
        m_server.answer(path, Server::message("200 OK", "Set-Cookie: a=b\r\nContent-Length: 0\r\n", {}));
        const Transfer transfer(m_server.url(path));
        QTRY_COMPARE(transfer.text(), u"200"_s);
        const QFuture<URLResponse> second = transfer.session->data(m_server.url(path));
        QTRY_COMPARE(outcome(second), u"200"_s);
        const QByteArray sent = m_server.requests().back().toLower();
        for (const char *header : {"\r\ncookie:", "\r\ncache-control:", "\r\nif-", "\r\nauthorization:"})
            QVERIFY2(!sent.contains(header), sent.constData());
    }

    void silenceOfAMinuteEndsATransfer_data()
    {
        const Table<QByteArray, qsizetype> row;
        // Two waits at the start; one more each for the secure connection, the headers and the first bytes. Those that
        // have become needless end with the next that the clock does.
        row("before the answer", QByteArray(), 3);
        row("within the answer", firstPart, 5);
    }

    void silenceOfAMinuteEndsATransfer()
    {
        const auto [bytes, waits] = Table<QByteArray, qsizetype>::current();
        m_server.answer(path, bytes, Server::Then::keepOpen);
        Transfer transfer(m_server.url(path));
        QTRY_COMPARE(m_server.requests().size(), size_t(1));
        QTRY_COMPARE(transfer.clock.sleeping(), waits);
        transfer.clock.advance(59s);
        QVERIFY(transfer.text().isEmpty());
        transfer.clock.advance(1s);
        QVERIFY(transfer.text().contains(u"60 seconds"));
        QTRY_COMPARE(m_server.openConnections(), 0);
    }

    void dripEndsAfterFiveMinutes()
    {
        m_server.answer(path, firstPart, Server::Then::keepOpen);
        Transfer transfer(m_server.url(path));
        QTRY_COMPARE(transfer.clock.sleeping(), 5);
        for (int drop = 1; drop <= 5; ++drop) {
            transfer.clock.advance(50s);
            QCOMPARE(transfer.clock.sleeping(), 2);
            m_server.send("drop");
            QTRY_COMPARE(transfer.clock.sleeping(), 3);
        }
        transfer.clock.advance(49s);
        QVERIFY(transfer.text().isEmpty());
        transfer.clock.advance(1s);
        QVERIFY(transfer.text().contains(u"300 seconds"_s));
    }

    void loopTurnsAllThroughTheUnpacking()
    {
        m_server.answer(path, packedPage(QByteArray(NetworkURLSession::bodyLimit, '\0')));
        Transfer transfer(m_server.url(path));
        // Once all has arrived nothing but the unpacking keeps the answer back.
        int arrivals = 0;
        int turns = 0;
        QObject untilTheEnd;
        const std::function<void()> turn = [&] {
            turns = std::exchange(arrivals, transfer.clock.sleeping()) == transfer.clock.sleeping() ? turns + 1 : 0;
            if (transfer.text().isEmpty())
                QMetaObject::invokeMethod(&untilTheEnd, turn, Qt::QueuedConnection);
        };
        turn();
        QTRY_COMPARE_WITH_TIMEOUT(transfer.text(), u"200"_s, 60000);
        QCOMPARE(transfer.body().size(), NetworkURLSession::bodyLimit);
        QVERIFY2(turns > 200, qPrintable(QString::number(turns)));
    }

    void endOfTheSessionCancels()
    {
        m_server.answer(path, firstPart, Server::Then::keepOpen);
        Transfer running(m_server.url(path));
        QTRY_COMPARE(running.clock.sleeping(), 5);
        const QFuture<URLResponse> starting = running.session->data(m_server.url(path));
        running.session.reset();
        QCOMPARE(running.text(), u"failed: The transfer was cancelled."_s);
        QCOMPARE(outcome(starting), u"failed: The transfer was cancelled."_s);
        running.clock.settle();
        QCOMPARE(running.clock.sleeping(), 0);
    }

private:
    static qsizetype threads()
    {
        return QDir(u"/proc/self/task"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
    }

    const QSslConfiguration m_security = Server::selfSigned();
    Server m_server{m_security};
    qsizetype m_threadsBefore = 0;
};

QTEST_GUILESS_MAIN(NetworkURLSessionTest)
#include "NetworkURLSessionTest.moc"
