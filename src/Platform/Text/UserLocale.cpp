// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Text/UserLocale.h"

#include "Platform/Text/IcuText.h"

#include <QByteArray>

#include <algorithm>
#include <cstring>
#include <optional>
#include <span>

namespace {
std::optional<UserLocale> &cached()
{
    static std::optional<UserLocale> instance;
    return instance;
}

QByteArray localeName()
{
    for (const char *variable : {"LC_ALL", "LC_TIME", "LANG"})
        if (QByteArray name = qgetenv(variable); !name.isEmpty())
            return name;
    return {};
}

/// An unknown language would get ICU's root data, where a month is called "M02".
bool isKnown(const icu::Locale &locale)
{
    int32_t count = 0;
    const icu::Locale *available = icu::Locale::getAvailableLocales(count);
    return std::ranges::any_of(std::span(available, size_t(count)), [&locale](const icu::Locale &known) {
        return std::strcmp(known.getLanguage(), locale.getLanguage()) == 0;
    });
}

icu::Locale userLocale()
{
    const QByteArray name = localeName();
    const icu::Locale locale = icu::Locale::createCanonical(name.constData());
    // "C.UTF-8" and "POSIX" are no languages either.
    return isKnown(locale) ? locale : icu::Locale("en", "US", "POSIX");
}
}

UserLocale &UserLocale::current()
{
    if (!cached())
        cached() = UserLocale();
    return *cached();
}

UserLocale::UserLocale()
    : m_locale(userLocale())
    , m_zone(icu::TimeZone::detectHostTimeZone())
{
    UErrorCode status = U_ZERO_ERROR;
    m_calendar.reset(icu::Calendar::createInstance(*m_zone, m_locale, status));
    checkIcu(status, "calendars");
    m_calendar->setRepeatedWallTimeOption(UCAL_WALLTIME_FIRST);
    m_calendar->setSkippedWallTimeOption(UCAL_WALLTIME_NEXT_VALID);
}

void reloadUserLocale()
{
    cached().reset();
}

std::unique_ptr<icu::TimeZone> knownZone(const QString &name)
{
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(toIcu(name)));
    if (*zone == icu::TimeZone::getUnknown())
        qFatal("time zone %s is unknown", qUtf8Printable(name));
    return zone;
}

void checkIcu(UErrorCode status, const char *what)
{
    if (U_FAILURE(status))
        qFatal("ICU has no usable %s: %s", what, u_errorName(status));
}
