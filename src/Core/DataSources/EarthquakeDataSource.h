// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/ParsedEarthquake.h"

#include <QFuture>
#include <QList>

struct Region;

/// A catalogue of events to be asked for its present list.
class EarthquakeDataSource
{
public:
    virtual ~EarthquakeDataSource() = default;

    /// The region that this source covers.
    virtual const Region &region() const = 0;

    /// The events now on offer, in the source's order; the same event number may come twice. Fails with
    /// HTMLParserError or with the session's own error.
    virtual QFuture<QList<ParsedEarthquake>> fetchEarthquakes() = 0;
};
