// SPDX-License-Identifier: GPL-3.0-or-later
#include "LoopGaps.h"

#include <QThread>

#include <algorithm>
#include <utility>

#include <time.h>

namespace {
double threadMilliseconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

double lastTurn = 0;
double longest = 0;
/// How many deliveries are under way, one within the other.
int depth = 0;

void turn()
{
    const double now = threadMilliseconds();
    longest = std::max(longest, now - std::exchange(lastTurn, now));
}
}

double LoopGaps::takeLongest()
{
    turn();
    return std::exchange(longest, 0);
}

bool LoopGaps::notify(QObject *receiver, QEvent *event)
{
    // Threads of the renderer deliver events of their own.
    if (QThread::currentThread() != thread())
        return QGuiApplication::notify(receiver, event);
    if (depth == 0)
        turn();
    ++depth;
    const bool isTaken = QGuiApplication::notify(receiver, event);
    --depth;
    return isTaken;
}
