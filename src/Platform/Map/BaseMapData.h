// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QByteArray>
#include <QList>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

/// A line of world points and the rectangle around it.
struct MapLine
{
    QList<QPointF> points;
    QRectF bounds;
};

/// An area by its rings: what lies within an odd number of them belongs to it.
struct MapArea
{
    std::vector<MapLine> rings;
    QRectF bounds;
    /// Name of an island; empty where the data has none.
    QString name;
    /// Metres; the floor is at least so deep. 0 for land.
    int depthMeters = 0;
};

/// A piece of a border between countries.
struct MapBorder
{
    MapLine line;
    bool isDisputed = false;
};

/// A place with a name on the map.
struct MapPlace
{
    enum class Kind {
        sea,
        archipelago,
        country,
        contextIsland,
        contextCity,
        island,
        islet,
        capital,
        city,
        town,
        village,
        volcano,
        peak,
        caldera,
        seamount,
        channel,
        cape,
        municipality
    };
    /// On which side of an island its name goes.
    enum class Side { north, south, east, west };

    QString name;
    Kind kind = Kind::village;
    /// 0 shows from afar, 7 only from close by.
    int rank = 0;
    std::optional<int> elevationMeters;
    /// The island that the place lies on, or is; empty elsewhere.
    QString island;
    Side side = Side::north;
    QPointF world;
};

/// Everything that the base map is painted from, projected once. Never changes, so that any thread may read it.
struct BaseMapData
{
    std::vector<MapArea> islands;
    /// The coasts around: Africa, Iberia, Madeira.
    std::vector<MapArea> contextLand;
    /// From the shallowest to the deepest.
    std::vector<MapArea> bathymetry;
    std::vector<MapLine> municipalBorders;
    std::vector<MapBorder> countryBorders;
    /// By rank, then by kind: the order in which they claim their room.
    std::vector<MapPlace> places;

    /// Reads the layers that are built into the program; some 20 ms, on any thread.
    static std::shared_ptr<const BaseMapData> load();
};

/// The areas of a GeoJSON feature collection, projected. What is no polygon is left out.
std::vector<MapArea> mapAreas(const QByteArray &geoJson);
