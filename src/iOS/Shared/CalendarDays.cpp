// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/CalendarDays.h"

#include "Platform/Clock/Clock.h"
#include "Platform/Support/Platform.h"
#include "Platform/Text/DateFormatter.h"
#include "Platform/Text/UserCalendar.h"

#include <QDateTime>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>
#include <vector>

using namespace std::chrono_literals;

namespace {
struct Month
{
    int year;
    int month;
};

Month monthOf(Instant instant)
{
    return {UserCalendar::year(instant), UserCalendar::month(instant)};
}

/// The order of day, month and year in the locale's short dates, as places of {day, month, year}.
std::array<int, 3> orderOfParts()
{
    // 23 November 2025, noon: three numbers that differ.
    const Instant sample = std::chrono::sys_days{std::chrono::year{2025} / 11 / 23} + 12h;
    const QString shown = DateFormatter(DateFormatter::Form::skeleton, QStringLiteral("yMd")).string(sample);
    std::array<std::pair<qsizetype, int>, 3> places;
    int part = 0;
    for (const char16_t *pattern : {u"d", u"M", u"y"}) {
        const QString text = DateFormatter(DateFormatter::Form::pattern, QString::fromUtf16(pattern)).string(sample);
        places[size_t(part)] = {shown.indexOf(text), part};
        ++part;
    }
    std::sort(places.begin(), places.end());
    std::array<int, 3> order{};
    for (int place = 0; place < 3; ++place)
        order[size_t(places[size_t(place)].second)] = place;
    return order;
}

struct Number
{
    int value = 0;
    int digits = 0;
};

/// The whole numbers in `text`, in any script's digits. Nothing when one is too long to be a part of a date.
std::optional<std::vector<Number>> numbersIn(const QString &text)
{
    std::vector<Number> numbers;
    bool isInNumber = false;
    for (const QChar c : text) {
        const int digit = c.digitValue();
        if (digit < 0) {
            isInNumber = false;
            continue;
        }
        if (!isInNumber)
            numbers.push_back({});
        isInNumber = true;
        Number &number = numbers.back();
        if (++number.digits > 4)
            return {};
        number.value = number.value * 10 + digit;
    }
    return numbers;
}
}

Instant CalendarDays::moved(Instant instant, int days)
{
    Instant day = UserCalendar::startOfDay(instant);
    // Noon of the neighbour, or close to it: no change of the clock is half a day.
    for (int i = 0; i < std::abs(days); ++i)
        day = UserCalendar::startOfDay(days > 0 ? day + 36h : day - 12h);
    return day;
}

Instant CalendarDays::startOfMonth(Instant instant)
{
    const Month month = monthOf(instant);
    return UserCalendar::startOfMonth(month.year, month.month).value_or(UserCalendar::startOfDay(instant));
}

Instant CalendarDays::startOfMonth(Instant instant, int months)
{
    Instant start = startOfMonth(instant);
    for (int i = 0; i < months; ++i) {
        const Month month = monthOf(start);
        const auto next = UserCalendar::startOfNextMonth(month.year, month.month);
        // The end of the calendar's own count.
        if (!next)
            break;
        start = *next;
    }
    for (int i = 0; i > months; --i)
        start = startOfMonth(start - 12h);
    return start;
}

Instant CalendarDays::movedByMonths(Instant instant, int months)
{
    const Instant day = UserCalendar::startOfDay(instant);
    const Instant target = startOfMonth(instant, months);
    const Instant beyond = startOfMonth(target, 1);
    Instant result = target;
    for (Instant counted = startOfMonth(instant); counted < day; counted = moved(counted, 1)) {
        const Instant next = moved(result, 1);
        if (next >= beyond)
            break;
        result = next;
    }
    return result;
}

int CalendarDays::placeInWeek(Instant instant)
{
    const Instant noon = UserCalendar::startOfDay(instant) + 12h;
    // Qt counts from Monday as 1, ICU from Sunday as 1.
    const int sinceSunday = QDateTime::fromMSecsSinceEpoch(noon.time_since_epoch().count()).date().dayOfWeek() % 7;
    return (sinceSunday - (UserCalendar::firstWeekday() - 1) + 7) % 7;
}

std::optional<Instant> CalendarDays::parsed(const QString &text)
{
    const auto numbers = numbersIn(text);
    if (!numbers || numbers->size() != 3)
        return {};
    std::array<int, 3> order = orderOfParts();
    if (numbers->front().digits == 4)
        order = {2, 1, 0};
    const Number day = numbers->at(size_t(order[0]));
    const Number month = numbers->at(size_t(order[1]));
    Number year = numbers->at(size_t(order[2]));
    if (day.digits > 2 || month.digits > 2 || year.digits == 3 || year.value == 0 || day.value < 1)
        return {};
    if (year.digits <= 2)
        year.value += UserCalendar::year(Platform::current().clock.now()) / 100 * 100;
    const auto start = UserCalendar::startOfMonth(year.value, month.value);
    if (!start || day.value > 31)
        return {};
    const Instant result = moved(*start, day.value - 1);
    if (result >= startOfMonth(*start, 1))
        return {};
    return result;
}
