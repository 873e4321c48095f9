// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/BackgroundActivity/BackgroundActivityScheduler.h"
#include "Platform/Support/Task.h"

#include <QObject>

/// An activity on a desktop without a scheduler of its own: a run falls due one interval after the one before, by
/// the program's clock, which counts on while the machine is suspended; what was missed meanwhile becomes one run. The
/// deviation is that of the event loop, well within any tolerance.
class ClockActivityScheduler : public BackgroundActivityScheduler
{
public:
    explicit ClockActivityScheduler(Clock &clock);
    ~ClockActivityScheduler() override;

    void setRepeats(bool repeats) override { m_repeats = repeats; }
    void setInterval(double seconds) override { m_interval = seconds; }
    void setTolerance(double seconds) override { m_tolerance = seconds; }
    /// Every run is one small transfer, so that the classes do not differ here.
    void setQualityOfService(QualityOfService quality) override { m_quality = quality; }
    void scheduleWithBlock(std::function<void(CompletionHandler)> block) override;
    void invalidate() override;

private:
    void sleepUntilDue(Task &task);

    Clock &m_clock;
    bool m_repeats = false;
    double m_interval = 0;
    double m_tolerance = 0;
    QualityOfService m_quality = QualityOfService::utility;
    bool m_isEnded = false;
    std::function<void(CompletionHandler)> m_block;
    QObject m_owner;
    Task::Handle m_task;
};
