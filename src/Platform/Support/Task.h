// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Clock/Clock.h"

#include <QObject>
#include <QPointer>

#include <memory>
#include <utility>

/// A sequence of steps with sleeps between them, held by its owner in a handle. Every step runs from the event loop;
/// none runs once the owner is gone. Dropping the handle cancels nothing. cancel() ends a sleep at once, but the step
/// behind it still runs, so that it can tidy up: each step looks at isCancelled() itself.
class Task : public std::enable_shared_from_this<Task>
{
public:
    using Handle = std::shared_ptr<Task>;
    using Step = std::function<void(Task &)>;

    /// Posts `first`; it never runs inside this call.
    static Handle start(Clock &clock, QObject *owner, Step first)
    {
        Handle task(new Task(clock, owner));
        task->sleep(std::chrono::milliseconds::zero(), std::move(first));
        return task;
    }

    /// Runs `next` after `length`, or at the next turn of the loop once the task is cancelled.
    void sleep(std::chrono::milliseconds length, Step next)
    {
        const auto wake = [self = shared_from_this(), next = std::move(next)] {
            self->m_sleep = 0;
            if (self->m_owner)
                next(*self);
        };
        m_sleep = m_clock.sleep(m_isCancelled ? std::chrono::milliseconds::zero() : length, wake);
    }

    void cancel()
    {
        m_isCancelled = true;
        if (m_sleep != 0)
            m_clock.hurry(m_sleep);
    }

    bool isCancelled() const { return m_isCancelled; }

private:
    Task(Clock &clock, QObject *owner)
        : m_clock(clock)
        , m_owner(owner)
    {
    }

    Clock &m_clock;
    QPointer<QObject> m_owner;
    Clock::SleepId m_sleep = 0;
    bool m_isCancelled = false;
};
