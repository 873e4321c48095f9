// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Text/UserCalendar.h"

#include "Platform/Text/IcuText.h"
#include "Platform/Text/UserLocale.h"

#include <unicode/dtfmtsym.h>
#include <unicode/smpdtfmt.h>

#include <algorithm>
#include <array>

namespace {
constexpr int namedMonths = 12;
constexpr std::array fieldsOfTheTime = {UCAL_HOUR_OF_DAY, UCAL_MINUTE, UCAL_SECOND, UCAL_MILLISECOND};

icu::Calendar &calendarAt(Instant instant)
{
    icu::Calendar &calendar = UserLocale::current().calendar();
    UErrorCode status = U_ZERO_ERROR;
    calendar.setTime(UDate(instant.time_since_epoch().count()), status);
    checkIcu(status, "calendars");
    return calendar;
}

int fieldAt(Instant instant, UCalendarDateFields field)
{
    UErrorCode status = U_ZERO_ERROR;
    const int32_t value = calendarAt(instant).get(field, status);
    checkIcu(status, "calendars");
    return value;
}

/// Twelve, or thirteen in a few calendars.
int monthsOfAYear()
{
    return UserLocale::current().calendar().getMaximum(UCAL_MONTH) + 1;
}

/// The instant of the calendar's fields; absent when they make none.
std::optional<Instant> instantOf(const icu::Calendar &calendar)
{
    UErrorCode status = U_ZERO_ERROR;
    const UDate milliseconds = calendar.getTime(status);
    if (U_FAILURE(status))
        return std::nullopt;
    return Instant(std::chrono::milliseconds(qint64(milliseconds)));
}
}

int UserCalendar::year(Instant instant)
{
    return fieldAt(instant, UCAL_YEAR);
}

int UserCalendar::month(Instant instant)
{
    return fieldAt(instant, UCAL_MONTH) + 1;
}

std::optional<Instant> UserCalendar::startOfMonth(int year, int month)
{
    if (month < 1 || month > monthsOfAYear())
        return std::nullopt;
    icu::Calendar &calendar = UserLocale::current().calendar();
    calendar.clear();
    calendar.set(year, month - 1, 1);
    const std::optional<Instant> start = instantOf(calendar);
    // A lenient calendar makes something of every year. A strict one would refuse a first day without midnight as
    // well, which exists.
    UErrorCode status = U_ZERO_ERROR;
    const bool stands = calendar.get(UCAL_YEAR, status) == year;
    return stands && U_SUCCESS(status) ? start : std::nullopt;
}

std::optional<Instant> UserCalendar::startOfNextMonth(int year, int month)
{
    if (!startOfMonth(year, month))
        return std::nullopt;
    return month == monthsOfAYear() ? startOfMonth(year + 1, 1) : startOfMonth(year, month + 1);
}

std::optional<Instant> UserCalendar::startOfYear(int year)
{
    return startOfMonth(year, 1);
}

Instant UserCalendar::startOfDay(Instant instant)
{
    icu::Calendar &calendar = calendarAt(instant);
    for (const UCalendarDateFields field : fieldsOfTheTime)
        calendar.set(field, 0);
    return instantOf(calendar).value_or(instant);
}

Instant UserCalendar::atTimeOfDay(Instant day, Instant time)
{
    std::array<int, fieldsOfTheTime.size()> values{};
    for (size_t i = 0; i < values.size(); ++i)
        values[i] = fieldAt(time, fieldsOfTheTime[i]);
    icu::Calendar &calendar = calendarAt(day);
    for (size_t i = 0; i < values.size(); ++i)
        calendar.set(fieldsOfTheTime[i], values[i]);
    return instantOf(calendar).value_or(day);
}

std::vector<QString> UserCalendar::monthNames()
{
    const icu::Locale &locale = UserLocale::current().locale();
    UErrorCode status = U_ZERO_ERROR;
    // A format of the locale brings the symbols of the locale's own calendar.
    const icu::SimpleDateFormat format(icu::UnicodeString(u"MMMM"), locale, status);
    checkIcu(status, "month names");
    int32_t count = 0;
    const icu::UnicodeString *months = format.getDateFormatSymbols()->getMonths(count);
    count = std::min(count, namedMonths);
    std::vector<QString> names;
    names.reserve(size_t(count));
    for (int32_t i = 0; i < count; ++i)
        names.push_back(fromIcu(icu::UnicodeString(months[i]).toTitle(nullptr, locale)));
    return names;
}

int UserCalendar::firstWeekday()
{
    UErrorCode status = U_ZERO_ERROR;
    const int weekday = UserLocale::current().calendar().getFirstDayOfWeek(status);
    checkIcu(status, "calendars");
    return weekday;
}
