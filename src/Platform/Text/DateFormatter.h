// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Support/Instant.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

/// Texts from instants, by a pattern or by the fields wanted (ICU). Making one costs about 250 us, formatting one:
/// keep formatters. Not to be shared between threads.
class DateFormatter
{
public:
    /// Where the pattern comes from.
    enum class Form {
        pattern, ///< fields and literals as they stand, such as "d MMM yyyy"
        skeleton ///< the fields wanted, in the order and with the separators of the locale
    };

    /// In the user's locale; in the user's zone unless `zone` names another, such as "UTC". An unknown zone stops the
    /// program: it can only be a broken installation.
    DateFormatter(Form form, const QString &text, const QString &zone = {});
    ~DateFormatter();
    DateFormatter(DateFormatter &&) noexcept;
    DateFormatter &operator=(DateFormatter &&) noexcept;

    QString string(Instant instant) const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

/// The calendar of the user's locale in the user's zone.
namespace UserCalendar {
/// Year in the calendar's own count, such as 1403 in a Persian locale.
int year(Instant instant);
/// Month of the calendar's year, from 1.
int month(Instant instant);
/// First instant of a month (1 to 12); absent when the calendar has no such date.
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

/// Takes the user's locale and zone from the environment anew; formatters made before keep theirs.
void reloadUserLocale();
