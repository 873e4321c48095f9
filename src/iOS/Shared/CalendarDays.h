// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Support/Instant.h"

#include <QString>

#include <optional>

/// Days and months of the user's calendar and zone. A day is known by its first instant.
namespace CalendarDays {
/// The day `days` after the one that holds `instant`; before it when negative. Counts days, not hours, so that
/// changes of the clock do no harm.
Instant moved(Instant instant, int days);
/// The first day of the month that holds `instant`.
Instant startOfMonth(Instant instant);
/// The first day of the month `months` after the one that holds `instant`.
Instant startOfMonth(Instant instant, int months);
/// The same day of the month `months` later, or that month's last day where it is shorter.
Instant movedByMonths(Instant instant, int months);
/// How many days lie between the locale's first day of the week and the day that holds `instant`: 0 to 6.
int placeInWeek(Instant instant);
/// The day that a typed text means: three whole numbers in the order in which the locale writes day, month and year,
/// or year first with four digits; anything but digits may part them. Two digits of a year mean this century. Nothing
/// when there is no such day, as 30 February.
std::optional<Instant> parsed(const QString &text);
}
