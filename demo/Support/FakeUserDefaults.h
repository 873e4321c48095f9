// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/UserDefaults/UserDefaults.h"

#include <QMap>
#include <QStringList>

/// Saved values in memory, and a record of the writes.
class FakeUserDefaults : public UserDefaults
{
public:
    QVariant object(const QString &key) const override { return values.value(key); }

    void setObject(const QString &key, const QVariant &value) override
    {
        values.insert(key, value);
        writes.append(key);
    }

    void removeObject(const QString &key) override
    {
        values.remove(key);
        writes.append(key);
    }

    QMap<QString, QVariant> values;
    /// The keys written or removed, in order.
    QStringList writes;
};
