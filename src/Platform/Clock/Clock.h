// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Support/Instant.h"

#include <QtGlobal>

#include <functional>

/// "Now" and every wait of the program. Main thread only.
class Clock
{
public:
    using SleepId = quint64;

    virtual ~Clock() = default;

    /// The present moment. May go back when the user sets the machine's clock.
    virtual Instant now() const = 0;

    /// Calls `wake` once, from the event loop and never from inside this call: after `length`, or at the next turn
    /// after hurry(). Time during which the machine is suspended counts; changes of the wall clock do not. Sleeps
    /// that end at the same instant wake in the order in which they were asked for.
    virtual SleepId sleep(std::chrono::milliseconds length, std::function<void()> wake) = 0;

    /// Ends a sleep early. A sleep that is already over: no effect.
    virtual void hurry(SleepId id) = 0;
};
