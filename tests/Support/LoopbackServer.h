// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QSslConfiguration>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

#include <memory>
#include <vector>

/// An HTTP server on this machine whose answers are raw bytes, so that a test can send what no proper server would.
/// One request a connection is enough for it.
class LoopbackServer : public QObject
{
    Q_OBJECT

public:
    /// What the server does once its bytes are sent.
    enum class Then { close, keepOpen };

    /// Speaks plain HTTP without `security`, and listens at any port without `port`.
    explicit LoopbackServer(const QSslConfiguration &security = {}, quint16 port = 0);

    /// What a server with this certificate shows.
    static QSslConfiguration certified(const QString &certificateFile, const QString &keyFile);
    /// What a server shows that vouches for itself, for a test that wants to trust its `localCertificate()`.
    static QSslConfiguration selfSigned();

    QUrl url(const QString &path) const;

    /// Sends `bytes`, status line and all, to every request for `path`; an empty path stands for all others. A path
    /// without an answer is closed at once.
    void answer(const QString &path, const QByteArray &bytes, Then then = Then::close);
    /// Sends more over the connection of the last request.
    void send(const QByteArray &bytes);

    /// Forgets all answers and requests.
    void reset();

    /// The requests so far, each with its headers.
    const std::vector<QByteArray> &requests() const { return m_requests; }
    /// How many connections are up. Once there are none, no request is on its way any more.
    int openConnections() const { return m_open; }
    /// How many connections ended in the handshake.
    int refusals() const { return m_refusals; }

    /// A status line, `headers` (each with its line end) and `body`.
    static QByteArray message(const char *status, const QByteArray &headers, const QByteArray &body);
    /// The same with status 200 and the right length.
    static QByteArray page(const QByteArray &body);
    /// One chunk of a chunked body; an empty one ends it.
    static QByteArray chunk(const QByteArray &data);
    /// `data` as one gzip member.
    static QByteArray gzip(const QByteArray &data);

private:
    struct Answer
    {
        QByteArray bytes;
        Then then;
    };

    void handle(QTcpSocket *connection);

    std::unique_ptr<QTcpServer> m_server;
    QHash<QString, Answer> m_answers;
    std::vector<QByteArray> m_requests;
    QPointer<QTcpSocket> m_last;
    int m_open = 0;
    int m_refusals = 0;
};
