// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Support/Instant.h"

#include <QString>

#include <optional>
#include <vector>

/// The calendar of the user's locale in the user's zone.
namespace UserCalendar {
/// Year in the calendar's own count, such as 1403 in a Persian locale.
int year(Instant instant);
/// Month of the calendar's year, from 1.
int month(Instant instant);
/// First instant of a month, counted from 1; absent when the calendar has no such date.
std::optional<Instant> startOfMonth(int year, int month);
/// First instant of the month after `year` and `month`, found from its own components: adding a month to the start
/// would be an hour late where the clock changes at midnight.
std::optional<Instant> startOfNextMonth(int year, int month);
/// First instant of a year; absent when the calendar has no such date.
std::optional<Instant> startOfYear(int year);
/// First instant of the day that holds `instant`.
Instant startOfDay(Instant instant);
/// The day that holds `day`, at the time of day of `time`: where the clock skips that time the moment after the gap,
/// where it strikes twice the first.
Instant atTimeOfDay(Instant day, Instant time);
/// The twelve full month names in the form that they have within a date, each word with a capital.
std::vector<QString> monthNames();
/// The first day of the week: 1 is Sunday.
int firstWeekday();
}
