// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/URLSession/URLSession.h"

/// Sends requests for one address to another one by a session that does the work. Every other address fails: nothing
/// leaves the machine by accident.
class DetouredURLSession : public URLSession
{
public:
    DetouredURLSession(URLSession &session, const QUrl &from, const QUrl &to)
        : m_session(session)
        , m_from(from)
        , m_to(to)
    {
    }

    QFuture<URLResponse> data(const QUrl &url) override
    {
        if (url == m_from)
            return m_session.data(m_to);
        const QString reason = QStringLiteral("no way to %1 from here").arg(url.toDisplayString());
        return QtFuture::makeExceptionalFuture<URLResponse>(std::make_exception_ptr(URLSessionError(reason)));
    }

private:
    URLSession &m_session;
    QUrl m_from;
    QUrl m_to;
};
