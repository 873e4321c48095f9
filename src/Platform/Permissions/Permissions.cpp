// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Permissions/Permissions.h"

#include <utility>

bool Permissions::isPending(Subject subject) const
{
    const auto waiting = m_waiting.find(subject);
    return waiting != m_waiting.end() && !waiting->second.empty();
}

void Permissions::setAnswer(Subject subject, Answer answer)
{
    remember(subject, answer);
    auto waiting = std::exchange(m_waiting[subject], {});
    Q_EMIT answerChanged(subject);
    for (QPromise<Answer> &promise : waiting) {
        promise.addResult(answer);
        promise.finish();
    }
}

QFuture<Permissions::Answer> Permissions::request(Subject subject)
{
    if (const Answer remembered = answer(subject); remembered != Answer::notDetermined)
        return QtFuture::makeReadyFuture(remembered);
    std::vector<QPromise<Answer>> &waiting = m_waiting[subject];
    QFuture<Answer> future = waiting.emplace_back().future();
    waiting.back().start();
    if (waiting.size() == 1)
        Q_EMIT questionPending(subject);
    return future;
}
