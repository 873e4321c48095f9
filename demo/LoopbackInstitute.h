// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QByteArray>
#include <QTcpServer>
#include <QUrl>

#include <functional>

class QTcpSocket;

/// A web server on this machine's loopback interface that answers every request with one page, in place of the
/// institute's. Other machines cannot reach it.
class LoopbackInstitute : public QTcpServer
{
    Q_OBJECT

public:
    /// Asks `page` for the page's bytes at each request. Listens from now on; check isListening().
    explicit LoopbackInstitute(std::function<QByteArray()> page, QObject *parent = nullptr);

    /// The address of the page.
    QUrl url() const;

private:
    void serve(QTcpSocket *socket);

    std::function<QByteArray()> m_page;
};
