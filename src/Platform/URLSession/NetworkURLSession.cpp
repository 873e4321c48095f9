// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/URLSession/NetworkURLSession.h"

#include "Platform/URLSession/NetworkTransfer.h"

#include <QNetworkRequest>

namespace {
constexpr int redirectLimit = 20;

QNetworkRequest requestFor(const QUrl &url)
{
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(redirectLimit);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    // One GET now and then gains nothing by HTTP/2, whose bodies end by other rules.
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    // Naming the packing keeps Qt from unpacking: see GzipDecoder.
    request.setRawHeader("Accept-Encoding", "gzip");
    return request;
}
}

NetworkURLSession::NetworkURLSession(Clock &clock)
    : m_clock(clock)
{
}

NetworkURLSession::~NetworkURLSession()
{
    // What a consumer starts on hearing of its cancellation is a child as well, and ends in the same way.
    while (auto *transfer = findChild<NetworkTransfer *>()) {
        transfer->setParent(nullptr);
        transfer->cancel();
        delete transfer;
    }
}

QFuture<URLResponse> NetworkURLSession::data(const QUrl &url)
{
    auto *transfer = new NetworkTransfer(m_clock, m_manager.get(requestFor(url)), this);
    return transfer->future();
}
