// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/URLSession/URLSession.h"

#include <QNetworkAccessManager>
#include <QObject>

#include <chrono>

class Clock;

/// GETs over the network. A transfer fails when nothing arrives for `silenceLimit`, when it takes longer than
/// `totalLimit` or when its body grows over `bodyLimit`; when a body ends before its announced length; when a
/// redirect leads from https to http; and when the server's certificate does not satisfy the machine's own store.
/// The silence is counted from the request, and anew from each sign of the server: the end of the secure handshake, a
/// redirect, the header of the answer, each piece of the body. So it also covers the name look-up and the connection.
/// It carries no cookies, keeps nothing, and over https sends its request once.
///
/// To be kept for the life of the process; transfers under way at its end fail as cancelled.
class NetworkURLSession : public QObject, public URLSession
{
    Q_OBJECT

public:
    static constexpr std::chrono::seconds silenceLimit{60};
    static constexpr std::chrono::seconds totalLimit{300};
    /// Decoded bytes.
    static constexpr qsizetype bodyLimit = 16 * qsizetype{1024} * 1024;

    explicit NetworkURLSession(Clock &clock);
    ~NetworkURLSession() override;

    QFuture<URLResponse> data(const QUrl &url) override;

private:
    Clock &m_clock;
    QNetworkAccessManager m_manager;
};
