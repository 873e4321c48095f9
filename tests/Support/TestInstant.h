// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Support/Instant.h"

#include <QDateTime>
#include <QString>

/// The moment of an ISO 8601 text such as "2025-03-30T00:59:59Z" or "2025-01-01T00:00:00.250+01:00". A text without
/// a zone is in the machine's, so write one.
inline Instant instant(const char *iso)
{
    const QDateTime moment = QDateTime::fromString(QString::fromLatin1(iso), Qt::ISODateWithMs);
    Q_ASSERT(moment.isValid());
    return Instant(std::chrono::milliseconds(moment.toMSecsSinceEpoch()));
}

/// The reverse, in universal time: "2025-03-30T00:59:59Z", with milliseconds only where there are some.
inline QString isoText(Instant instant)
{
    const qint64 milliseconds = instant.time_since_epoch().count();
    const QDateTime moment = QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC);
    return moment.toString(milliseconds % 1000 == 0 ? Qt::ISODate : Qt::ISODateWithMs);
}
