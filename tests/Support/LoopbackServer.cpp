// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/LoopbackServer.h"

#include <QFile>
#include <QHostAddress>
#include <QProcess>
#include <QSslKey>
#include <QSslServer>
#include <QTemporaryDir>

LoopbackServer::LoopbackServer(const QSslConfiguration &security, quint16 port)
{
    if (security.isNull()) {
        m_server = std::make_unique<QTcpServer>();
    } else {
        auto server = std::make_unique<QSslServer>();
        server->setSslConfiguration(security);
        connect(server.get(), &QSslServer::errorOccurred, this, [this] { ++m_refusals; });
        m_server = std::move(server);
    }
    connect(m_server.get(), &QTcpServer::pendingConnectionAvailable, this, [this] {
        while (QTcpSocket *connection = m_server->nextPendingConnection()) {
            connect(connection, &QTcpSocket::readyRead, this, [this, connection] { handle(connection); });
            connect(connection, &QTcpSocket::disconnected, connection, &QObject::deleteLater);
            ++m_open;
            connect(connection, &QTcpSocket::disconnected, this, [this] { --m_open; });
        }
    });
    if (!m_server->listen(QHostAddress::LocalHost, port))
        qFatal("%s", qPrintable(m_server->errorString()));
}

QSslConfiguration LoopbackServer::certified(const QString &certificateFile, const QString &keyFile)
{
    QSslConfiguration security = QSslConfiguration::defaultConfiguration();
    security.setLocalCertificate(QSslCertificate::fromPath(certificateFile).value(0));
    QFile key(keyFile);
    if (key.open(QIODevice::ReadOnly))
        security.setPrivateKey(QSslKey(&key, QSsl::Ec));
    security.setPeerVerifyMode(QSslSocket::VerifyNone);
    if (security.localCertificate().isNull() || security.privateKey().isNull())
        qFatal("openssl made no certificate");
    return security;
}

QSslConfiguration LoopbackServer::selfSigned()
{
    const QTemporaryDir folder;
    const QString key = folder.filePath(QStringLiteral("key.pem"));
    const QString certificate = folder.filePath(QStringLiteral("certificate.pem"));
    QProcess::execute(QStringLiteral("openssl"),
                      QStringLiteral("req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 "
                                     "-subj /CN=loopback -addext subjectAltName=IP:127.0.0.1 -batch -keyout %1 -out %2")
                          .arg(key, certificate)
                          .split(u' '));
    return certified(certificate, key);
}

QUrl LoopbackServer::url(const QString &path) const
{
    const QString scheme =
        qobject_cast<QSslServer *>(m_server.get()) ? QStringLiteral("https") : QStringLiteral("http");
    return QUrl(QStringLiteral("%1://127.0.0.1:%2%3").arg(scheme).arg(m_server->serverPort()).arg(path));
}

void LoopbackServer::answer(const QString &path, const QByteArray &bytes, Then then)
{
    m_answers.insert(path, Answer{bytes, then});
}

void LoopbackServer::send(const QByteArray &bytes)
{
    m_last->write(bytes);
    m_last->flush();
}

void LoopbackServer::reset()
{
    m_answers.clear();
    m_requests.clear();
}

void LoopbackServer::handle(QTcpSocket *connection)
{
    if (!connection->peek(connection->bytesAvailable()).contains("\r\n\r\n"))
        return;
    m_last = connection;
    m_requests.push_back(connection->readAll());
    const QString path = QString::fromLatin1(m_requests.back().split(' ').value(1));
    const Answer answer = m_answers.value(path, m_answers.value({}, Answer{{}, Then::close}));
    send(answer.bytes);
    if (answer.then == Then::close)
        connection->disconnectFromHost();
}

QByteArray LoopbackServer::message(const char *status, const QByteArray &headers, const QByteArray &body)
{
    return QByteArray("HTTP/1.1 ") + status + "\r\n" + headers + "\r\n" + body;
}

QByteArray LoopbackServer::page(const QByteArray &body)
{
    return message("200 OK", "Content-Length: " + QByteArray::number(body.size()) + "\r\n", body);
}

QByteArray LoopbackServer::chunk(const QByteArray &data)
{
    return QByteArray::number(data.size(), 16) + "\r\n" + data + "\r\n";
}

QByteArray LoopbackServer::gzip(const QByteArray &data)
{
    QProcess packer;
    packer.start(QStringLiteral("gzip"), {QStringLiteral("-n")});
    packer.write(data);
    packer.closeWriteChannel();
    if (!packer.waitForFinished())
        qFatal("gzip: %s", qPrintable(packer.errorString()));
    return packer.readAllStandardOutput();
}
