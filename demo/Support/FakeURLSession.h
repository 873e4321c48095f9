// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/URLSession/URLSession.h"

#include <QPromise>

#include <deque>
#include <memory>
#include <variant>
#include <vector>

/// Answers in the order in which a test queued them; a request without an answer fails at once. With `holdsAnswers`
/// requests stay open until release(), or fail at the end of the session.
class FakeURLSession : public URLSession
{
public:
    ~FakeURLSession() override
    {
        m_answers.clear();
        while (!m_open.empty())
            release();
    }

    QFuture<URLResponse> data(const QUrl &url) override
    {
        requests.push_back(url);
        auto promise = std::make_shared<QPromise<URLResponse>>();
        promise->start();
        QFuture<URLResponse> future = promise->future();
        m_open.push_back(promise);
        if (!holdsAnswers)
            release();
        return future;
    }

    void enqueue(const QByteArray &body, int status = 200) { m_answers.emplace_back(URLResponse{body, status}); }
    void enqueue(const URLResponse &response) { m_answers.emplace_back(response); }
    void enqueueError(const QString &description) { m_answers.emplace_back(URLSessionError(description)); }

    /// Answers the oldest open request.
    void release()
    {
        auto promise = m_open.front();
        m_open.pop_front();
        if (m_answers.empty()) {
            promise->setException(std::make_exception_ptr(URLSessionError(QStringLiteral("no answer queued"))));
        } else {
            const auto answer = m_answers.front();
            m_answers.pop_front();
            if (const auto *response = std::get_if<URLResponse>(&answer))
                promise->addResult(*response);
            else
                promise->setException(std::make_exception_ptr(std::get<URLSessionError>(answer)));
        }
        promise->finish();
    }

    bool holdsAnswers = false;
    std::vector<QUrl> requests;

private:
    std::deque<std::variant<URLResponse, URLSessionError>> m_answers;
    std::deque<std::shared_ptr<QPromise<URLResponse>>> m_open;
};
