// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QString>

#include <unicode/calendar.h>
#include <unicode/locid.h>
#include <unicode/timezone.h>

#include <memory>

/// Locale, zone and calendar of the user, as the environment tells them: made once and kept, since each costs far
/// more to make than to use. Main thread only.
class UserLocale
{
public:
    /// Made at the first use, and again after reloadUserLocale().
    static UserLocale &current();

    /// From the first of LC_ALL, LC_TIME and LANG that is not empty. "C", an unknown language and no language at all
    /// count as plain English.
    const icu::Locale &locale() const { return m_locale; }
    /// From TZ, else from the machine's settings.
    const icu::TimeZone &zone() const { return *m_zone; }
    /// A working copy to set and read; its present fields mean nothing. Of a wall time that occurs twice it takes the
    /// first, of one that is skipped the moment after the gap.
    icu::Calendar &calendar() { return *m_calendar; }

private:
    UserLocale();

    icu::Locale m_locale;
    std::unique_ptr<icu::TimeZone> m_zone;
    std::unique_ptr<icu::Calendar> m_calendar;
};

/// Takes the user's locale and zone from the environment anew; formatters made before keep theirs.
void reloadUserLocale();

/// The zone called `name`. Stops the program when there is none.
std::unique_ptr<icu::TimeZone> knownZone(const QString &name);

/// Stops the program when `status` tells a failure: ICU's data is then not usable at all. `what` names the data.
void checkIcu(UErrorCode status, const char *what);
