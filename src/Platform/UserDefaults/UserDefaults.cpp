// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/UserDefaults/UserDefaults.h"

#include <QDateTime>

bool UserDefaults::boolValue(const QString &key) const
{
    const QVariant value = object(key);
    return value.typeId() != QMetaType::QString && value.toBool();
}

double UserDefaults::doubleValue(const QString &key) const
{
    return object(key).toDouble();
}

std::optional<QString> UserDefaults::stringValue(const QString &key) const
{
    const QVariant value = object(key);
    if (value.typeId() != QMetaType::QString)
        return std::nullopt;
    return value.toString();
}

std::optional<Instant> UserDefaults::dateValue(const QString &key) const
{
    const QVariant value = object(key);
    if (value.typeId() != QMetaType::QDateTime || !value.toDateTime().isValid())
        return std::nullopt;
    return Instant(std::chrono::milliseconds(value.toDateTime().toMSecsSinceEpoch()));
}

void UserDefaults::setDate(const QString &key, Instant value)
{
    setObject(key, QDateTime::fromMSecsSinceEpoch(value.time_since_epoch().count(), Qt::UTC));
}
