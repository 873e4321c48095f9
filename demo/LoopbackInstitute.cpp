// SPDX-License-Identifier: GPL-3.0-or-later
#include "LoopbackInstitute.h"

#include <QTcpSocket>

#include <utility>

LoopbackInstitute::LoopbackInstitute(std::function<QByteArray()> page, QObject *parent)
    : QTcpServer(parent)
    , m_page(std::move(page))
{
    connect(this, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket *const socket = nextPendingConnection()) {
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { serve(socket); });
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        }
    });
    listen(QHostAddress::LocalHost);
}

QUrl LoopbackInstitute::url() const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1/").arg(serverPort()));
}

void LoopbackInstitute::serve(QTcpSocket *socket)
{
    constexpr qint64 longestRequest = 16 * qint64{1024};
    // What is asked for makes no difference; only where the question ends does.
    if (!socket->peek(longestRequest).contains("\r\n\r\n")) {
        if (socket->bytesAvailable() >= longestRequest)
            socket->abort();
        return;
    }
    socket->readAll();
    const QByteArray body = m_page();
    socket->write("HTTP/1.1 200 OK\r\nContent-Type: text/html; charset=UTF-8\r\nConnection: close\r\nContent-Length: "
                  + QByteArray::number(body.size()) + "\r\n\r\n" + body);
    socket->disconnectFromHost();
}
