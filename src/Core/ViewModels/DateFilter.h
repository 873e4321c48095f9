// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Support/Instant.h"

#include <QMetaType>
#include <QString>

#include <array>
#include <optional>

/// How far back a list reaches: a rolling window that ends now, never a calendar day.
class DateFilter
{
    Q_GADGET

public:
    enum Choice : quint8 { all, lastHour, last24h, last7d, last30d };
    Q_ENUM(Choice)

    constexpr DateFilter(Choice choice = all)
        : m_choice(choice)
    {
    }

    /// In the order of the filter popover.
    static const std::array<DateFilter, 5> allCases;

    /// The choice whose rawValue() is exactly this text.
    static std::optional<DateFilter> fromRawValue(QStringView rawValue);

    constexpr Choice choice() const { return m_choice; }
    QString rawValue() const;
    QString id() const { return rawValue(); }
    /// The earliest date that is kept, reckoned from the present moment at each call; absent for `all`.
    std::optional<Instant> cutoffDate() const;
    QString localizedLabel() const;

    constexpr bool operator==(const DateFilter &) const = default;

private:
    Choice m_choice;
};

inline constexpr std::array<DateFilter, 5> DateFilter::allCases = {all, lastHour, last24h, last7d, last30d};
