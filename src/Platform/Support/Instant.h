// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <chrono>

/// A moment in universal time, to the millisecond. Ordered; differences are durations.
using Instant = std::chrono::sys_time<std::chrono::milliseconds>;

/// A length of time in seconds as a 64-bit float, the unit of every rule and interval.
using Seconds = std::chrono::duration<double>;

/// Seconds from `from` to `to`; negative when `to` is the earlier one.
inline double secondsBetween(Instant from, Instant to)
{
    return Seconds(to - from).count();
}

/// `instant` moved by `seconds`, which may be negative; rounded to the millisecond.
inline Instant moved(Instant instant, double seconds)
{
    return instant + std::chrono::round<std::chrono::milliseconds>(Seconds(seconds));
}
