// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/BaseMapData.h"

#include "Platform/Map/WebMercator.h"

#include <QFile>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPolygonF>

#include <algorithm>

namespace {
QByteArray layer(const char *name)
{
    QFile file(QStringLiteral(":/basemap/%1.geojson").arg(QLatin1String(name)));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the base map layer %s is not built in", name);
    return file.readAll();
}

QJsonArray features(const QByteArray &geoJson)
{
    return QJsonDocument::fromJson(geoJson).object().value(QLatin1String("features")).toArray();
}

QPointF projected(const QJsonArray &position)
{
    return WebMercator::toWorld(Coordinate{position.at(1).toDouble(), position.at(0).toDouble()});
}

MapLine line(const QJsonArray &positions)
{
    MapLine result;
    result.points.reserve(positions.size());
    for (const auto &position : positions)
        result.points.append(projected(position.toArray()));
    result.bounds = QPolygonF(result.points).boundingRect();
    return result;
}

void appendPolygon(MapArea &area, const QJsonArray &rings)
{
    for (const auto &ring : rings) {
        area.rings.push_back(line(ring.toArray()));
        area.bounds |= area.rings.back().bounds;
    }
}

MapArea area(const QJsonObject &feature)
{
    MapArea result;
    const QJsonObject properties = feature.value(QLatin1String("properties")).toObject();
    result.name = properties.value(QLatin1String("name")).toString();
    result.depthMeters = properties.value(QLatin1String("depth")).toInt();
    const QJsonObject geometry = feature.value(QLatin1String("geometry")).toObject();
    const QString type = geometry.value(QLatin1String("type")).toString();
    const QJsonArray coordinates = geometry.value(QLatin1String("coordinates")).toArray();
    if (type == QLatin1String("Polygon"))
        appendPolygon(result, coordinates);
    if (type == QLatin1String("MultiPolygon"))
        for (const auto &polygon : coordinates)
            appendPolygon(result, polygon.toArray());
    return result;
}

MapLine lineOf(const QJsonObject &feature)
{
    return line(feature.value(QLatin1String("geometry")).toObject().value(QLatin1String("coordinates")).toArray());
}

MapPlace::Kind kindOf(const QString &text)
{
    using Kind = MapPlace::Kind;
    static const QHash<QString, Kind> kinds{
        {QStringLiteral("sea"), Kind::sea},
        {QStringLiteral("archipelago"), Kind::archipelago},
        {QStringLiteral("country"), Kind::country},
        {QStringLiteral("island_ctx"), Kind::contextIsland},
        {QStringLiteral("city_ctx"), Kind::contextCity},
        {QStringLiteral("island"), Kind::island},
        {QStringLiteral("islet"), Kind::islet},
        {QStringLiteral("capital"), Kind::capital},
        {QStringLiteral("city"), Kind::city},
        {QStringLiteral("town"), Kind::town},
        {QStringLiteral("village"), Kind::village},
        {QStringLiteral("volcano"), Kind::volcano},
        {QStringLiteral("peak"), Kind::peak},
        {QStringLiteral("caldera"), Kind::caldera},
        {QStringLiteral("seamount"), Kind::seamount},
        {QStringLiteral("channel"), Kind::channel},
        {QStringLiteral("cape"), Kind::cape},
    };
    return kinds.value(text, Kind::village);
}

MapPlace::Side sideOf(const QString &letter)
{
    if (letter == QLatin1String("S"))
        return MapPlace::Side::south;
    if (letter == QLatin1String("E"))
        return MapPlace::Side::east;
    if (letter == QLatin1String("W"))
        return MapPlace::Side::west;
    return MapPlace::Side::north;
}

MapPlace place(const QJsonObject &feature)
{
    const QJsonObject properties = feature.value(QLatin1String("properties")).toObject();
    MapPlace result;
    result.name = properties.value(QLatin1String("name")).toString();
    result.kind = kindOf(properties.value(QLatin1String("kind")).toString());
    result.rank = properties.value(QLatin1String("rank")).toInt();
    if (properties.contains(QLatin1String("elev")))
        result.elevationMeters = properties.value(QLatin1String("elev")).toInt();
    result.island = properties.value(QLatin1String("island")).toString();
    result.side = sideOf(properties.value(QLatin1String("side")).toString());
    result.world =
        projected(feature.value(QLatin1String("geometry")).toObject().value(QLatin1String("coordinates")).toArray());
    return result;
}

/// Municipalities carry a name and a place for it; their areas are drawn by the borders alone.
MapPlace municipality(const QJsonObject &feature)
{
    const QJsonObject properties = feature.value(QLatin1String("properties")).toObject();
    MapPlace result;
    result.name = properties.value(QLatin1String("name")).toString();
    result.kind = MapPlace::Kind::municipality;
    result.rank = 7;
    result.world = projected(properties.value(QLatin1String("label")).toArray());
    return result;
}
}

std::vector<MapArea> mapAreas(const QByteArray &geoJson)
{
    std::vector<MapArea> result;
    for (const auto &feature : features(geoJson)) {
        MapArea read = area(feature.toObject());
        if (!read.rings.empty())
            result.push_back(std::move(read));
    }
    return result;
}

std::shared_ptr<const BaseMapData> BaseMapData::load()
{
    auto data = std::make_shared<BaseMapData>();
    data->islands = mapAreas(layer("land"));
    data->contextLand = mapAreas(layer("context_land"));
    data->bathymetry = mapAreas(layer("bathymetry"));
    for (const auto &feature : features(layer("municipal_borders")))
        data->municipalBorders.push_back(lineOf(feature.toObject()));
    for (const auto &feature : features(layer("country_borders"))) {
        const QJsonObject properties = feature.toObject().value(QLatin1String("properties")).toObject();
        data->countryBorders.push_back(
            {lineOf(feature.toObject()), properties.value(QLatin1String("disputed")).toInt() == 1});
    }
    for (const auto &feature : features(layer("places")))
        data->places.push_back(place(feature.toObject()));
    for (const auto &feature : features(layer("municipalities")))
        data->places.push_back(municipality(feature.toObject()));
    std::stable_sort(data->places.begin(), data->places.end(), [](const MapPlace &a, const MapPlace &b) {
        return std::pair(a.rank, a.kind) < std::pair(b.rank, b.kind);
    });
    std::stable_sort(data->bathymetry.begin(), data->bathymetry.end(),
                     [](const MapArea &a, const MapArea &b) { return a.depthMeters < b.depthMeters; });
    return data;
}
