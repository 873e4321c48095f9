// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/BackgroundActivity/ClockActivityScheduler.h"

#include <utility>

ClockActivityScheduler::ClockActivityScheduler(Clock &clock)
    : m_clock(clock)
{
}

ClockActivityScheduler::~ClockActivityScheduler()
{
    ClockActivityScheduler::invalidate();
}

void ClockActivityScheduler::scheduleWithBlock(std::function<void(CompletionHandler)> block)
{
    if (m_isEnded)
        return;
    m_block = std::move(block);
    m_task = Task::start(m_clock, &m_owner, [this](Task &task) { sleepUntilDue(task); });
}

void ClockActivityScheduler::invalidate()
{
    m_isEnded = true;
    if (m_task)
        m_task->cancel();
    m_task = nullptr;
}

void ClockActivityScheduler::sleepUntilDue(Task &task)
{
    if (task.isCancelled())
        return;
    task.sleep(std::chrono::round<std::chrono::milliseconds>(Seconds(m_interval)), [this](Task &due) {
        if (due.isCancelled())
            return;
        if (m_repeats)
            sleepUntilDue(due);
        // The block may end the activity, and with it this object.
        const auto block = m_block;
        block([](Result) {});
    });
}
