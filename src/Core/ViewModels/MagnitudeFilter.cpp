// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/ViewModels/MagnitudeFilter.h"

#include "Platform/Text/Localization.h"

std::optional<MagnitudeFilter> MagnitudeFilter::fromRawValue(QStringView rawValue)
{
    for (const MagnitudeFilter filter : allCases)
        if (filter.rawValue() == rawValue)
            return filter;
    return std::nullopt;
}

QString MagnitudeFilter::rawValue() const
{
    const std::optional<MagnitudeCategory> kept = category();
    return kept ? kept->rawValue() : QStringLiteral("all");
}

std::optional<MagnitudeCategory> MagnitudeFilter::category() const
{
    switch (m_choice) {
    case all:
        return std::nullopt;
    case micro:
        return MagnitudeCategory::micro;
    case low:
        return MagnitudeCategory::low;
    case moderate:
        return MagnitudeCategory::moderate;
    case strong:
        return MagnitudeCategory::strong;
    case major:
        return MagnitudeCategory::major;
    }
    Q_UNREACHABLE();
}

QString MagnitudeFilter::localizedLabel() const
{
    switch (m_choice) {
    case all:
        return localized("filter.magnitude.all", QStringLiteral("All"));
    case micro:
        return localized("filter.magnitude.micro", QStringLiteral("Micro"));
    case low:
        return localized("filter.magnitude.low", QStringLiteral("Minor"));
    case moderate:
        return localized("filter.magnitude.moderate", QStringLiteral("Moderate"));
    case strong:
        return localized("filter.magnitude.strong", QStringLiteral("Strong"));
    case major:
        return localized("filter.magnitude.major", QStringLiteral("Major"));
    }
    Q_UNREACHABLE();
}
