// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Text/DateFormatter.h"

#include "Platform/Text/IcuText.h"
#include "Platform/Text/UserLocale.h"

#include <unicode/dtptngen.h>
#include <unicode/smpdtfmt.h>

namespace {
/// The order, separators and literals that the locale gives the fields of `skeleton`.
icu::UnicodeString patternFor(const QString &skeleton, const icu::Locale &locale)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateTimePatternGenerator> generator(
        icu::DateTimePatternGenerator::createInstance(locale, status));
    checkIcu(status, "date patterns");
    // Without the option a locale that writes 3:03 does so even where "HH" asks for two digits.
    icu::UnicodeString pattern = generator->getBestPattern(toIcu(skeleton), UDATPG_MATCH_HOUR_FIELD_LENGTH, status);
    checkIcu(status, "date patterns");
    return pattern;
}
}

struct DateFormatter::Private
{
    icu::SimpleDateFormat format;
};

DateFormatter::DateFormatter(Form form, const QString &text, const QString &zone)
{
    const UserLocale &user = UserLocale::current();
    const icu::UnicodeString pattern = form == Form::skeleton ? patternFor(text, user.locale()) : toIcu(text);
    UErrorCode status = U_ZERO_ERROR;
    d.reset(new Private{icu::SimpleDateFormat(pattern, user.locale(), status)});
    checkIcu(status, "date formats");
    d->format.adoptTimeZone(zone.isEmpty() ? user.zone().clone() : knownZone(zone).release());
}

DateFormatter::~DateFormatter() = default;
DateFormatter::DateFormatter(DateFormatter &&) noexcept = default;
DateFormatter &DateFormatter::operator=(DateFormatter &&) noexcept = default;

QString DateFormatter::string(Instant instant) const
{
    icu::UnicodeString text;
    d->format.format(UDate(instant.time_since_epoch().count()), text);
    return fromIcu(text);
}
