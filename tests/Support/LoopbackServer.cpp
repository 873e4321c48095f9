// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/LoopbackServer.h"

#include <QFile>
#include <QHostAddress>
#include <QProcess>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QTemporaryDir>
#include <QtEndian>

#include <array>

namespace {
QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray littleEndian(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

std::array<quint32, 256> crcTable()
{
    std::array<quint32, 256> table{};
    for (quint32 byte = 0; byte < table.size(); ++byte) {
        table.at(byte) = byte;
        for (int bit = 0; bit < 8; ++bit)
            table.at(byte) = (table.at(byte) >> 1) ^ ((table.at(byte) & 1) ? 0xedb88320 : 0);
    }
    return table;
}

/// The checksum of gzip.
quint32 crc32(const QByteArray &data)
{
    static const std::array<quint32, 256> table = crcTable();
    quint32 crc = 0xffffffff;
    for (const char byte : data)
        crc = (crc >> 8) ^ table[(crc ^ quint8(byte)) & 0xff];
    return ~crc;
}
}

LoopbackServer::LoopbackServer(Security security)
{
    if (security == Security::selfSigned)
        listenSecurely();
    else
        m_server = std::make_unique<QTcpServer>();
    connect(m_server.get(), &QTcpServer::pendingConnectionAvailable, this, [this] {
        while (QTcpSocket *connection = m_server->nextPendingConnection()) {
            connect(connection, &QTcpSocket::readyRead, this, [this, connection] { handle(connection); });
            connect(connection, &QTcpSocket::disconnected, connection, &QObject::deleteLater);
            ++m_open;
            connect(connection, &QTcpSocket::disconnected, this, [this] { --m_open; });
        }
    });
    if (!m_server->listen(QHostAddress::LocalHost))
        qFatal("no port to be had on the loopback");
}

void LoopbackServer::listenSecurely()
{
    const QTemporaryDir folder;
    const QString key = folder.filePath(QStringLiteral("key.pem"));
    const QString certificate = folder.filePath(QStringLiteral("certificate.pem"));
    QProcess::execute(QStringLiteral("openssl"),
                      QStringLiteral("req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 "
                                     "-subj /CN=loopback -addext subjectAltName=IP:127.0.0.1 -batch -keyout %1 -out %2")
                          .arg(key, certificate)
                          .split(u' '));
    m_certificate = QSslCertificate(contents(certificate));
    if (m_certificate.isNull())
        qFatal("openssl made no certificate");
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificate(m_certificate);
    configuration.setPrivateKey(QSslKey(contents(key), QSsl::Ec));
    auto server = std::make_unique<QSslServer>();
    server->setSslConfiguration(configuration);
    m_server = std::move(server);
}

QUrl LoopbackServer::url(const QString &path) const
{
    const QString scheme = m_certificate.isNull() ? QStringLiteral("http") : QStringLiteral("https");
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
    const Answer answer = m_answers.value(path, Answer{{}, Then::close});
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
    constexpr qsizetype qtHeader = 4;
    constexpr qsizetype zlibHeader = 2;
    constexpr qsizetype zlibChecksum = 4;
    const QByteArray zlib = qCompress(data);
    const QByteArray deflated = zlib.mid(qtHeader + zlibHeader, zlib.size() - qtHeader - zlibHeader - zlibChecksum);
    const QByteArray header = QByteArray::fromHex("1f8b08000000000000ff");
    return header + deflated + littleEndian(crc32(data)) + littleEndian(quint32(data.size()));
}
