// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Map/BaseMapData.h"
#include "Platform/Map/BaseMapStyle.h"
#include "Platform/Map/MapCamera.h"

#include <QImage>

#include <memory>
#include <vector>

/// What lies above the base map and wants room: round marks, and titles that go under them where they fit.
struct MapAnnotations
{
    struct Title
    {
        QPointF world;
        /// As the page has it: it is cleaned and shortened where it is drawn.
        QString text;
        /// Pixels that it stands lower than the others, under a mark that is drawn larger.
        double drop = 0;
    };

    /// World points.
    std::vector<QPointF> positions;
    /// Of every mark, in pixels.
    double radius = 0;
    /// Pixels from a position up to the centre of its mark.
    double lift = 0;
    /// The most important first.
    std::vector<Title> titles;
};

/// What to paint. A plain value, to be handed to another thread.
struct BaseMapRequest
{
    /// Of the window.
    MapCamera camera;
    /// Pixels painted beyond the window on every side, so that a gesture does not run out of map at once.
    double margin = 0;
    double devicePixelRatio = 1;
    MapAppearance appearance = MapAppearance::light;
    /// Null where nothing lies above.
    std::shared_ptr<const MapAnnotations> annotations;
    /// What lies over the map, in pixels of the window: no label goes there.
    std::vector<QRectF> covers;
};

/// A painted piece of the world.
struct BaseMapPicture
{
    QImage image;
    /// What it shows.
    QRectF world;
    /// The scale that it was painted for: its labels and widths are right at this one.
    double scale = 0;
};

/// Paints sea, land, borders, graticule and labels. Takes some tens of milliseconds: not for the main thread.
BaseMapPicture paintBaseMap(const BaseMapData &data, const BaseMapRequest &request);
