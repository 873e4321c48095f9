// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/ViewModels/DateFilter.h"

#include "Platform/Clock/Clock.h"
#include "Platform/Support/Platform.h"
#include "Platform/Text/Localization.h"

using namespace std::chrono_literals;

namespace {
std::optional<std::chrono::seconds> lengthBack(DateFilter::Choice choice)
{
    switch (choice) {
    case DateFilter::all:
        return std::nullopt;
    case DateFilter::lastHour:
        return 1h;
    case DateFilter::last24h:
        return 24h;
    case DateFilter::last7d:
        return 7 * 24h;
    case DateFilter::last30d:
        return 30 * 24h;
    }
    Q_UNREACHABLE();
}
}

std::optional<DateFilter> DateFilter::fromRawValue(QStringView rawValue)
{
    for (const DateFilter filter : allCases)
        if (filter.rawValue() == rawValue)
            return filter;
    return std::nullopt;
}

QString DateFilter::rawValue() const
{
    switch (m_choice) {
    case all:
        return QStringLiteral("all");
    case lastHour:
        return QStringLiteral("lastHour");
    case last24h:
        return QStringLiteral("last24h");
    case last7d:
        return QStringLiteral("last7d");
    case last30d:
        return QStringLiteral("last30d");
    }
    Q_UNREACHABLE();
}

std::optional<Instant> DateFilter::cutoffDate() const
{
    const auto length = lengthBack(m_choice);
    if (!length)
        return std::nullopt;
    return Platform::current().clock.now() - *length;
}

QString DateFilter::localizedLabel() const
{
    switch (m_choice) {
    case all:
        return localized("filter.date.all", QStringLiteral("All"));
    case lastHour:
        return localized("filter.date.lastHour", QStringLiteral("Last hour"));
    case last24h:
        return localized("filter.date.last24h", QStringLiteral("Last 24h"));
    case last7d:
        return localized("filter.date.last7d", QStringLiteral("Last 7 days"));
    case last30d:
        return localized("filter.date.last30d", QStringLiteral("Last 30 days"));
    }
    Q_UNREACHABLE();
}
