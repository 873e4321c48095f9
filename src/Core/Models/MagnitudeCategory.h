// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QColor>
#include <QMetaType>
#include <QString>

#include <array>
#include <optional>

/// The one scale of severity: five bands into which every magnitude falls.
class MagnitudeCategory
{
    Q_GADGET
    Q_PROPERTY(QString label READ label CONSTANT)
    Q_PROPERTY(QString description READ description CONSTANT)
    Q_PROPERTY(QString range READ range CONSTANT)
    Q_PROPERTY(QColor color READ color CONSTANT)

public:
    enum Band : quint8 { micro, low, moderate, strong, major };
    Q_ENUM(Band)

    constexpr MagnitudeCategory(Band band = micro)
        : m_band(band)
    {
    }

    /// From the weakest up.
    static const std::array<MagnitudeCategory, 5> allCases;

    /// The band of a magnitude. Lower bounds belong to their band; what is not a number is `major`.
    static constexpr MagnitudeCategory from(double magnitude)
    {
        if (magnitude < 2.0)
            return micro;
        if (magnitude >= 2.0 && magnitude < 4.0)
            return low;
        if (magnitude >= 4.0 && magnitude < 6.0)
            return moderate;
        if (magnitude >= 6.0 && magnitude < 7.0)
            return strong;
        return major;
    }

    /// The category of a saved text, exactly as rawValue() wrote it.
    static std::optional<MagnitudeCategory> fromRawValue(QStringView rawValue);

    constexpr Band band() const { return m_band; }
    /// The text by which the category is saved.
    QString rawValue() const;
    QString label() const;
    QString description() const;
    /// The band in words, to one decimal place.
    QString range() const;
    QColor color() const;
    /// The lower bound; 0.0 for `micro`, which has none.
    double minimumMagnitude() const;

    constexpr bool operator==(const MagnitudeCategory &) const = default;

private:
    Band m_band;
};

inline constexpr std::array<MagnitudeCategory, 5> MagnitudeCategory::allCases = {micro, low, moderate, strong, major};

Q_DECLARE_METATYPE(MagnitudeCategory)
