// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Notifications/RefreshInterval.h"

#include "Platform/Text/Localization.h"

std::optional<RefreshInterval> RefreshInterval::fromRawValue(QStringView rawValue)
{
    for (const RefreshInterval interval : allCases)
        if (interval.rawValue() == rawValue)
            return interval;
    return std::nullopt;
}

QString RefreshInterval::rawValue() const
{
    switch (m_choice) {
    case disabled:
        return QStringLiteral("disabled");
    case fiveMinutes:
        return QStringLiteral("5min");
    case tenMinutes:
        return QStringLiteral("10min");
    case thirtyMinutes:
        return QStringLiteral("30min");
    case oneHour:
        return QStringLiteral("60min");
    }
    Q_UNREACHABLE();
}

std::optional<double> RefreshInterval::seconds() const
{
    switch (m_choice) {
    case disabled:
        return std::nullopt;
    case fiveMinutes:
        return 300.0;
    case tenMinutes:
        return 600.0;
    case thirtyMinutes:
        return 1800.0;
    case oneHour:
        return 3600.0;
    }
    Q_UNREACHABLE();
}

QString RefreshInterval::displayName() const
{
    switch (m_choice) {
    case disabled:
        return localized("settings.refresh.manual", QStringLiteral("Manual"));
    case fiveMinutes:
        return localized("settings.refresh.5min", QStringLiteral("5 minutes"));
    case tenMinutes:
        return localized("settings.refresh.10min", QStringLiteral("10 minutes"));
    case thirtyMinutes:
        return localized("settings.refresh.30min", QStringLiteral("30 minutes"));
    case oneHour:
        return localized("settings.refresh.1hour", QStringLiteral("1 hour"));
    }
    Q_UNREACHABLE();
}
