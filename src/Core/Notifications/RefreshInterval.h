// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QMetaType>
#include <QString>

#include <array>
#include <optional>

/// How often the catalogue refreshes by itself.
class RefreshInterval
{
    Q_GADGET

public:
    enum Choice : quint8 { disabled, fiveMinutes, tenMinutes, thirtyMinutes, oneHour };
    Q_ENUM(Choice)

    constexpr RefreshInterval(Choice choice = tenMinutes)
        : m_choice(choice)
    {
    }

    /// In the order of the picker.
    static const std::array<RefreshInterval, 5> allCases;

    /// The choice of a saved text, exactly as rawValue() wrote it.
    static std::optional<RefreshInterval> fromRawValue(QStringView rawValue);

    constexpr Choice choice() const { return m_choice; }
    /// The text by which the choice is saved.
    QString rawValue() const;
    /// Absent for `disabled`.
    std::optional<double> seconds() const;
    QString displayName() const;

    constexpr bool operator==(const RefreshInterval &) const = default;
    friend size_t qHash(RefreshInterval interval, size_t seed = 0) { return ::qHash(int(interval.m_choice), seed); }

private:
    Choice m_choice;
};

inline constexpr std::array<RefreshInterval, 5> RefreshInterval::allCases = {disabled, fiveMinutes, tenMinutes,
                                                                             thirtyMinutes, oneHour};
