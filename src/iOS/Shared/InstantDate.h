// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Support/Instant.h"

#include <QDateTime>

/// A moment as QML takes it for a date, and back. Both lose nothing.
inline QDateTime dateOf(Instant instant)
{
    return QDateTime::fromMSecsSinceEpoch(instant.time_since_epoch().count());
}

inline Instant instantOf(const QDateTime &date)
{
    return Instant(std::chrono::milliseconds(date.toMSecsSinceEpoch()));
}
