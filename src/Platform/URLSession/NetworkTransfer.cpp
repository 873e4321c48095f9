// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/URLSession/NetworkTransfer.h"

#include "Platform/URLSession/NetworkURLSession.h"

#include <QPointer>

#include <exception>
#include <memory>
#include <utility>

namespace {
/// What is taken in one turn of the event loop.
constexpr qint64 pieceBytes = 64 * qint64{1024};
/// What Qt may read ahead: a usual page as a whole, since every stop and start costs milliseconds.
constexpr qint64 readAheadBytes = 1024 * qint64{1024};

/// Errors by which Qt tells a status of 400 and above; the answer itself is whole.
bool isServersVerdict(QNetworkReply::NetworkError error)
{
    return (error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownContentError)
        || (error >= QNetworkReply::InternalServerError && error <= QNetworkReply::UnknownServerError)
        || error == QNetworkReply::ProtocolInvalidOperationError;
}

std::optional<int> statusOf(const QNetworkReply &reply)
{
    const QVariant status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute);
    return status.isValid() ? std::optional(status.toInt()) : std::nullopt;
}

/// A packing that was not asked for stays as it is, and is no page to whoever reads it.
bool isPacked(const QNetworkReply &reply)
{
    const QByteArray encoding = reply.rawHeader("Content-Encoding").trimmed().toLower();
    return encoding == "gzip" || encoding == "x-gzip";
}
}

NetworkTransfer::NetworkTransfer(Clock &clock, QNetworkReply *reply, QObject *parent)
    : QObject(parent)
    , m_clock(clock)
    , m_reply(reply)
{
    m_promise.start();
    m_reply->setParent(this);
    m_reply->setReadBufferSize(readAheadBytes);
    connect(m_reply, &QNetworkReply::encrypted, this, &NetworkTransfer::allowOneConnection);
    connect(m_reply, &QNetworkReply::encrypted, this, &NetworkTransfer::expectMore);
    connect(m_reply, &QNetworkReply::redirected, this, [this] { m_isConnected = false; });
    connect(m_reply, &QNetworkReply::redirected, this, &NetworkTransfer::expectMore);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &NetworkTransfer::expectMore);
    connect(m_reply, &QNetworkReply::readyRead, this, &NetworkTransfer::expectMore);
    connect(m_reply, &QNetworkReply::readyRead, this, &NetworkTransfer::readSoon);
    connect(m_reply, &QNetworkReply::finished, this, &NetworkTransfer::readSoon);
    m_deadline = after(NetworkURLSession::totalLimit, QStringLiteral("The transfer took longer than 300 seconds."));
    expectMore();
}

void NetworkTransfer::cancel()
{
    if (!m_isReleased)
        fail(QStringLiteral("The transfer was cancelled."));
}

// An answer that Qt has at once must not arrive inside the call that asks for it.
void NetworkTransfer::readSoon()
{
    if (!std::exchange(m_isReadingSoon, true))
        QMetaObject::invokeMethod(this, &NetworkTransfer::read, Qt::QueuedConnection);
}

void NetworkTransfer::read()
{
    m_isReadingSoon = false;
    if (m_isReleased)
        return;
    const bool isUnpacking = m_gzip && m_gzip->hasMore();
    const QByteArray piece = isUnpacking ? QByteArray() : m_reply->read(pieceBytes);
    if (!isUnpacking && piece.isEmpty()) {
        if (m_reply->isFinished())
            conclude();
        return;
    }
    const GzipDecoder::Result result = isUnpacking ? m_gzip->unpack(m_body) : take(piece);
    if (m_body.size() > NetworkURLSession::bodyLimit)
        fail(QStringLiteral("The answer is larger than 16 MiB."));
    else if (result == GzipDecoder::Result::broken)
        fail(QStringLiteral("The answer cannot be unpacked."));
    else
        readSoon();
}

GzipDecoder::Result NetworkTransfer::take(const QByteArray &piece)
{
    if (!std::exchange(m_isBodyBegun, true) && isPacked(*m_reply))
        m_gzip.emplace();
    if (!m_gzip) {
        m_body += piece;
        return GzipDecoder::Result::ok;
    }
    m_gzip->feed(piece);
    return m_gzip->unpack(m_body);
}

// Qt sends a request again, up to three times, when its connection closes without an answer. It waits for the
// receivers of encrypted() before it sends.
void NetworkTransfer::allowOneConnection()
{
    if (std::exchange(m_isConnected, true))
        fail(QStringLiteral("The server closed the connection without an answer."));
}

void NetworkTransfer::expectMore()
{
    if (m_isReleased)
        return;
    const Clock::SleepId before = std::exchange(
        m_silence, after(NetworkURLSession::silenceLimit, QStringLiteral("The server sent nothing for 60 seconds.")));
    m_clock.hurry(before);
}

void NetworkTransfer::conclude()
{
    const QNetworkReply::NetworkError error = m_reply->error();
    const std::optional<int> status = statusOf(*m_reply);
    const bool isVerdict = isServersVerdict(error) && status >= 400;
    // Qt makes an error of a redirection that does not say where to.
    const bool leadsNowhere =
        error == QNetworkReply::ProtocolUnknownError && status && !m_reply->hasRawHeader("Location");
    if (error != QNetworkReply::NoError && !isVerdict && !leadsNowhere)
        return fail(m_reply->errorString());
    if (m_gzip && !m_gzip->isComplete())
        return fail(QStringLiteral("The answer is cut short."));
    QPromise<URLResponse> promise = release();
    promise.addResult(URLResponse{std::move(m_body), status});
    promise.finish();
}

void NetworkTransfer::fail(const QString &description)
{
    QPromise<URLResponse> promise = release();
    promise.setException(std::make_exception_ptr(URLSessionError(description)));
    promise.finish();
}

QPromise<URLResponse> NetworkTransfer::release()
{
    m_isReleased = true;
    m_reply->disconnect(this);
    m_reply->abort();
    m_clock.hurry(std::exchange(m_silence, 0));
    m_clock.hurry(std::exchange(m_deadline, 0));
    deleteLater();
    return std::move(m_promise);
}

Clock::SleepId NetworkTransfer::after(std::chrono::milliseconds length, const QString &description)
{
    const auto id = std::make_shared<Clock::SleepId>();
    const auto wake = [alive = QPointer(this), id, description] {
        // A sleep that was hurried is in neither place any more.
        if (alive && (alive->m_silence == *id || alive->m_deadline == *id))
            alive->fail(description);
    };
    return *id = m_clock.sleep(length, wake);
}
