// SPDX-License-Identifier: GPL-3.0-or-later
#include "Budgets.h"
#include "LoopGaps.h"

#include "Platform/URLSession/NetworkURLSession.h"
#include "Support/FakeClock.h"
#include "Support/LoopbackServer.h"

#include <QEventLoop>
#include <QFutureWatcher>

#include <cstdlib>

void networkBudgets(Budgets &budgets)
{
    const QByteArray gigabyte = LoopbackServer::gzip(QByteArray(NetworkURLSession::bodyLimit, '\0')).repeated(64);
    LoopbackServer server;
    server.answer(QStringLiteral("/"), LoopbackServer::message("200 OK", "Content-Encoding: gzip\r\n", gigabyte));
    FakeClock clock;
    NetworkURLSession session(clock);
    LoopGaps::takeLongest();
    QFutureWatcher<URLResponse> answer;
    QEventLoop loop;
    QObject::connect(&answer, &QFutureWatcherBase::finished, &loop, &QEventLoop::quit);
    answer.setFuture(session.data(server.url(QStringLiteral("/"))));
    loop.exec();
    try {
        answer.result();
        std::abort();
    } catch (const URLSessionError &) {
        // It is to be refused.
    }
    budgets.measured("hostile page: longest gap of the loop until a gigabyte is refused", LoopGaps::takeLongest(),
                     "ms");
}
