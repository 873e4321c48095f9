// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/Earthquake.h"
#include "Core/Models/ParsedEarthquake.h"

#include <QStringList>

#include <span>

/// An event that differs from others in what a test looks at: `second` counts from 1970.
inline Earthquake testEarthquake(const QString &eventID, qint64 second, double magnitude = 2.5,
                                 const QString &location = QStringLiteral("SW HIERRO"))
{
    return {eventID,
            Instant(std::chrono::seconds(second)),
            27.75,
            -18.25,
            10.0,
            magnitude,
            QStringLiteral("mbLg"),
            std::nullopt,
            location};
}

/// The row of a page for such an event.
inline ParsedEarthquake testRow(const QString &eventID, Instant date, double magnitude = 2.5,
                                const QString &location = QStringLiteral("SW HIERRO"))
{
    return {eventID, date, 27.75, -18.25, 10.0, magnitude, QStringLiteral("mbLg"), std::nullopt, location};
}

/// The event numbers in order, with a blank between them.
inline QString eventIDs(std::span<const Earthquake> earthquakes)
{
    QStringList ids;
    for (const Earthquake &earthquake : earthquakes)
        ids.append(earthquake.eventID());
    return ids.join(QLatin1Char(' '));
}
