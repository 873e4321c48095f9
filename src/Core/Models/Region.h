// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Map/CoordinateRegion.h"

#include <QLocale>
#include <QString>
#include <QUrl>

/// A monitored region: where its events are listed and how the map first shows it.
struct Region
{
    QString id;
    /// For people.
    QString name;
    /// The page that the catalogue source reads.
    QUrl dataSourceURL;
    Coordinate centerCoordinate;
    CoordinateSpan defaultSpan;
    QLocale locale;

    /// The default map view.
    CoordinateRegion mapRegion() const { return {centerCoordinate, defaultSpan}; }

    /// The one region there is.
    static const Region &canaryIslands();
};
