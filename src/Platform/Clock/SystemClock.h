// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Clock/Clock.h"

#include <QObject>

#include <map>
#include <memory>

/// The machine's own clock. Its sleeps count the time that the machine is suspended (on Linux; elsewhere a suspension
/// lengthens them) and are never cut short by a change of the wall clock. Sleeps that have not ended when it dies
/// never wake.
class SystemClock : public QObject, public Clock
{
    Q_OBJECT

public:
    SystemClock();
    ~SystemClock() override;

    Instant now() const override;
    SleepId sleep(std::chrono::milliseconds length, std::function<void()> wake) override;
    void hurry(SleepId id) override;

private:
    class Alarm;
    using Moment = std::chrono::nanoseconds;
    struct Sleeper
    {
        Moment end;
        std::function<void()> wake;
        bool isPosted = false;
    };

    /// Hands everything that is due to the event loop and sets the alarm to what comes next.
    void ring();
    void setAlarm();
    /// Wakes one sleep from the event loop. Each has an event of its own, so that sleeps keep their place among
    /// everything else that is posted.
    void post(SleepId id);

    std::unique_ptr<Alarm> m_alarm;
    SleepId m_serial = 0;
    std::map<SleepId, Sleeper> m_sleepers;
};
