// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Support/LoopbackServer.h"

#include <QByteArray>
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
    void setPage(const QByteArray &page) { m_server->answer({}, LoopbackServer::page(page)); }

    /// Requests that came whole.
    int requests() const { return int(m_server->requests().size()); }
    /// Connections that ended in the handshake.
    int refusals() const { return m_server->refusals(); }

private:
    void bindOver(const QString &file, const QString &place);
    void makeCertificates(Certificate certificate);

    QTemporaryDir m_folder;
    QStringList m_bound;
    std::unique_ptr<LoopbackServer> m_server;
};
