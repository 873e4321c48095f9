// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Clock/Clock.h"
#include "Platform/URLSession/GzipDecoder.h"
#include "Platform/URLSession/URLSession.h"

#include <QNetworkReply>
#include <QObject>
#include <QPromise>

#include <optional>

/// One transfer of a NetworkURLSession, from the request to its answer. Deletes itself once it has answered.
class NetworkTransfer : public QObject
{
    Q_OBJECT

public:
    /// Takes over `reply`.
    NetworkTransfer(Clock &clock, QNetworkReply *reply, QObject *parent);

    QFuture<URLResponse> future() const { return m_promise.future(); }

    /// Fails, unless it has answered already.
    void cancel();

private:
    /// In the next turn of the event loop, however often it is called in this one.
    void readSoon();
    /// Takes what has arrived, a bounded piece at a time, so that the event loop turns in between.
    void read();
    GzipDecoder::Result take(const QByteArray &piece);
    void expectMore();
    void allowOneConnection();
    void conclude();
    void fail(const QString &description);
    /// Lets go of the reply and of the clock, so that nothing more arrives, and of the promise: a consumer may destroy
    /// the session, and this transfer with it, while the promise is being finished.
    QPromise<URLResponse> release();

    Clock::SleepId after(std::chrono::milliseconds length, const QString &description);

    Clock &m_clock;
    QNetworkReply *m_reply;
    QPromise<URLResponse> m_promise;
    QByteArray m_body;
    /// Absent for a body that is not packed.
    std::optional<GzipDecoder> m_gzip;
    bool m_isBodyBegun = false;
    bool m_isReadingSoon = false;
    bool m_isConnected = false;
    Clock::SleepId m_silence = 0;
    Clock::SleepId m_deadline = 0;
    bool m_isReleased = false;
};
