// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QByteArray>
#include <QFuture>
#include <QString>
#include <QUrl>

#include <exception>
#include <optional>

/// What came back from a transfer that ran to its end, whatever the server's verdict.
struct URLResponse
{
    /// The body, content encodings undone.
    QByteArray body;
    /// The HTTP status of the final response; absent when the answer was not HTTP.
    std::optional<int> statusCode;
};

/// A transfer that did not run to its end: no connection, time-out, cancellation, a failed secure connection, a body
/// cut short or over the limit, a redirect that was refused.
class URLSessionError : public std::exception
{
public:
    explicit URLSessionError(const QString &description)
        : m_description(description)
        , m_utf8(description.toUtf8())
    {
    }

    /// For people, in the session's own words.
    QString localizedDescription() const { return m_description; }
    const char *what() const noexcept override { return m_utf8.constData(); }

private:
    QString m_description;
    QByteArray m_utf8;
};

/// Plain GETs. The transfer runs off the main thread's stack; the answer arrives on the main thread.
class URLSession
{
public:
    virtual ~URLSession() = default;

    /// The installed platform's session.
    static URLSession &shared();

    /// Fetches `url` once, without retry. Ends with a response of any status, or fails with URLSessionError.
    virtual QFuture<URLResponse> data(const QUrl &url) = 0;
};
