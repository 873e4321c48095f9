// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Support/Async.h"
#include "Platform/URLSession/NetworkURLSession.h"
#include "Support/FakeClock.h"
#include "Support/FakeURLSession.h"
#include "Support/LoopbackServer.h"
#include "Support/Table.h"

#include <QNetworkProxyFactory>
#include <QTest>

namespace {
/// A session over something that a test can make answer.
class SessionUnderTest
{
public:
    virtual ~SessionUnderTest() = default;
    virtual URLSession &session() = 0;
    /// Answers requests for `path`, in the order of these calls.
    virtual void answer(const QString &path, const char *status, const QByteArray &body) = 0;
    virtual QUrl url(const QString &path) const = 0;
};

class Fake : public SessionUnderTest
{
public:
    URLSession &session() override { return m_session; }
    void answer(const QString &, const char *status, const QByteArray &body) override
    {
        m_session.enqueue(body, QByteArray(status).left(3).toInt());
    }
    QUrl url(const QString &path) const override { return QUrl(QStringLiteral("http://fake") + path); }

private:
    FakeURLSession m_session;
};

class Real : public SessionUnderTest
{
public:
    URLSession &session() override { return m_session; }
    void answer(const QString &path, const char *status, const QByteArray &body) override
    {
        m_server.answer(path, LoopbackServer::message(status, {}, body));
    }
    QUrl url(const QString &path) const override { return m_server.url(path); }

private:
    LoopbackServer m_server;
    FakeClock m_clock;
    NetworkURLSession m_session{m_clock};
};
}

/// The fake and the real session keep the same promises.
class URLSessionContractTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QNetworkProxyFactory::setUseSystemConfiguration(false); }

    void everyRequestIsAnswered_data()
    {
        const Table<bool> row;
        row("fake", true);
        row("real", false);
    }

    void everyRequestIsAnswered()
    {
        const auto [isFake] = Table<bool>::current();
        if (isFake)
            m_test = std::make_unique<Fake>();
        else
            m_test = std::make_unique<Real>();
        m_test->answer(QStringLiteral("/nobody-listens"), "200 OK", "first");
        m_test->answer(QStringLiteral("/a"), "200 OK", "page");
        m_test->answer(QStringLiteral("/b"), "404 Not Found", "gone");
        m_test->session().data(m_test->url(QStringLiteral("/nobody-listens")));
        const QStringList outcomes = fetched({QStringLiteral("/a"), QStringLiteral("/b"), QStringLiteral("/nothing")});
        QCOMPARE(outcomes.mid(0, 2), (QStringList{QStringLiteral("200 page"), QStringLiteral("404 gone")}));
        QVERIFY2(outcomes.at(2).startsWith(QLatin1String("error: ")), qPrintable(outcomes.at(2)));
        QVERIFY(outcomes.at(2).size() > 10);
    }

private:
    /// Fetches all paths at once and gives what became of each.
    QStringList fetched(const QStringList &paths)
    {
        m_outcomes = QStringList(paths.size());
        for (qsizetype i = 0; i < paths.size(); ++i)
            whenFinished(m_test->session().data(m_test->url(paths.at(i))), this,
                         [this, i](const QFuture<URLResponse> &ended) { m_outcomes[i] = told(ended); });
        if (!QTest::qWaitFor([this] { return !m_outcomes.contains(QString()); }))
            m_outcomes.append(QStringLiteral("not all of them answered"));
        return m_outcomes;
    }

    static QString told(const QFuture<URLResponse> &ended)
    {
        try {
            const URLResponse response = ended.result();
            return QStringLiteral("%1 %2").arg(response.statusCode.value_or(0)).arg(QString::fromUtf8(response.body));
        } catch (const URLSessionError &error) {
            return QStringLiteral("error: ") + error.localizedDescription();
        } catch (const std::exception &error) {
            return QStringLiteral("another error: ") + QString::fromUtf8(error.what());
        }
    }

    std::unique_ptr<SessionUnderTest> m_test;
    QStringList m_outcomes;
};

QTEST_GUILESS_MAIN(URLSessionContractTest)
#include "URLSessionContractTest.moc"
