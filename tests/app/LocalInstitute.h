// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QByteArray>
#include <QSslServer>
#include <QStringList>
#include <QTemporaryDir>

/// Stands for the institute's web site on this machine: binds a hosts file that leads its name here and a folder of
/// certificates over the machine's own, and answers on port 443. Only for a process that has a mount and a network
/// namespace of its own, as root of it.
class LocalInstitute
{
public:
    /// What the server shows: one that the machine's certificates vouch for, or one that has a single fault.
    enum class Certificate { trusted, unknownAuthority, selfSigned, expired, otherHost };

    explicit LocalInstitute(Certificate certificate);
    ~LocalInstitute();
    Q_DISABLE_COPY_MOVE(LocalInstitute)

    /// The body of every answer.
    void setPage(const QByteArray &page) { m_page = page; }

    /// Requests that came whole.
    int requests() const { return m_requests; }
    /// Connections that ended in the handshake.
    int refusals() const { return m_refusals; }

private:
    void bindOver(const QString &file, const QString &place);
    void makeCertificates(Certificate certificate);
    void listen();
    void answer(QTcpSocket *connection);

    QTemporaryDir m_folder;
    QStringList m_bound;
    QSslServer m_server;
    QByteArray m_page;
    int m_requests = 0;
    int m_refusals = 0;
};
