// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Support/Instant.h"

#include <QString>
#include <QVariant>

#include <optional>

/// The user's saved values by key. Typed: a date reads back as a date, a text that looks like one does not.
/// A write is in the file when the call returns; a write that fails (disk full) leaves the file as it was and the
/// new value in memory. Main thread only.
class UserDefaults
{
public:
    virtual ~UserDefaults() = default;

    /// The installed platform's defaults.
    static UserDefaults &standard();

    /// The saved value as it stands; an invalid QVariant when the key is unset.
    virtual QVariant object(const QString &key) const = 0;
    virtual void setObject(const QString &key, const QVariant &value) = 0;
    virtual void removeObject(const QString &key) = 0;

    /// True for a number other than 0. False when unset or neither boolean nor number: a text is never true.
    bool boolValue(const QString &key) const;
    /// 0.0 when unset or not readable as a number.
    double doubleValue(const QString &key) const;
    /// Absent when unset or not a text.
    std::optional<QString> stringValue(const QString &key) const;
    /// Absent when unset or not a date.
    std::optional<Instant> dateValue(const QString &key) const;

    void setBool(const QString &key, bool value) { setObject(key, value); }
    void setDouble(const QString &key, double value) { setObject(key, value); }
    void setString(const QString &key, const QString &value) { setObject(key, value); }
    void setDate(const QString &key, Instant value);
};
