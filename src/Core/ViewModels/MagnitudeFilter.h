// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/MagnitudeCategory.h"

#include <QMetaType>
#include <QString>

#include <array>
#include <optional>

/// Which magnitudes a list shows: all of them or one category.
class MagnitudeFilter
{
    Q_GADGET

public:
    enum Choice : quint8 { all, micro, low, moderate, strong, major };
    Q_ENUM(Choice)

    constexpr MagnitudeFilter(Choice choice = all)
        : m_choice(choice)
    {
    }

    /// In the order of the filter popover.
    static const std::array<MagnitudeFilter, 6> allCases;

    /// The choice whose rawValue() is exactly this text.
    static std::optional<MagnitudeFilter> fromRawValue(QStringView rawValue);

    constexpr Choice choice() const { return m_choice; }
    QString rawValue() const;
    QString id() const { return rawValue(); }
    /// The category that is kept; absent for `all`.
    std::optional<MagnitudeCategory> category() const;
    QString localizedLabel() const;

    constexpr bool operator==(const MagnitudeFilter &) const = default;

private:
    Choice m_choice;
};

inline constexpr std::array<MagnitudeFilter, 6> MagnitudeFilter::allCases = {all, micro, low, moderate, strong, major};
