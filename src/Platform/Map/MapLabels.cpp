// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/MapLabels.h"

#include "Platform/Text/OneLine.h"

#include <QHash>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {
using Kind = MapPlace::Kind;

constexpr double symbolGap = 7;
constexpr double islandGap = 5;
/// An island wider than this carries its name inside.
constexpr double insideWidth = 260;
/// Some forty capitals.
constexpr double widestTitle = 280;
/// More characters than that have no room in a title.
constexpr qsizetype mostCharacters = 160;

QRectF around(const QPointF &center, const QSizeF &size)
{
    return {center - QPointF(size.width() / 2, size.height() / 2), size};
}

/// East, west, above, below, then the four corners.
std::vector<QRectF> besidePoint(const QPointF &point, const QSizeF &text)
{
    const double x = symbolGap + text.width() / 2;
    const double y = symbolGap - 2 + text.height() / 2;
    const double cornerX = symbolGap / 2 + text.width() / 2;
    std::vector<QRectF> result;
    for (const QPointF &offset : {QPointF(x, 0), QPointF(-x, 0), QPointF(0, -y), QPointF(0, y), QPointF(cornerX, -y),
                                  QPointF(-cornerX, -y), QPointF(cornerX, y), QPointF(-cornerX, y)})
        result.push_back(around(point + offset, text));
    return result;
}

/// Outside a rectangle, on its own side first.
std::vector<QRectF> besideIsland(const QRectF &island, MapPlace::Side side, const QSizeF &text)
{
    const QRectF north = around({island.center().x(), island.top() - islandGap - text.height() / 2}, text);
    const QRectF south = around({island.center().x(), island.bottom() + islandGap + text.height() / 2}, text);
    const QRectF east = around({island.right() + islandGap + text.width() / 2, island.center().y()}, text);
    const QRectF west = around({island.left() - islandGap - text.width() / 2, island.center().y()}, text);
    switch (side) {
    case MapPlace::Side::north:
        return {north, south, east, west};
    case MapPlace::Side::south:
        return {south, north, west, east};
    case MapPlace::Side::east:
        return {east, west, north, south};
    case MapPlace::Side::west:
        return {west, east, north, south};
    }
    Q_UNREACHABLE();
}
}

MapLabels::MapLabels(const MapSheet &sheet, const BaseMapStyle &style, const std::vector<SheetArea> &islands,
                     const std::vector<SheetArea> &contextLand)
    : m_sheet(sheet)
    , m_style(style)
    , m_islands(islands)
    , m_contextLand(contextLand)
    , m_space(sheet.size)
{
}

void MapLabels::reserveGraticuleFigures(const MapCamera &window)
{
    const QRectF shown = m_sheet.toSheet(window.visibleWorld());
    m_space.reserve({shown.left(), shown.bottom() - 18, shown.width(), 18});
    const double step = graticuleStep(window.visibleWorld().width());
    for (const double latitude : graticuleParallels(window.visibleWorld(), step)) {
        const double y = m_sheet.toSheet(WebMercator::toWorld(Coordinate{latitude, 0})).y();
        m_space.reserve({shown.left(), y - 13, 46, 13});
    }
}

void MapLabels::reserveCovers(const MapCamera &window, const std::vector<QRectF> &covers)
{
    const QPointF corner = m_sheet.toSheet(window.visibleWorld().topLeft());
    for (const QRectF &cover : covers)
        m_space.reserve(cover.translated(corner));
}

void MapLabels::avoid(const MapAnnotations &annotations)
{
    m_markRadius = annotations.radius;
    m_markLift = annotations.lift;
    for (const QPointF &position : annotations.positions)
        m_space.cover(m_sheet.toSheet(position) - QPointF(0, m_markLift), m_markRadius);
}

void MapLabels::place(const std::vector<MapPlace> &places)
{
    std::vector<const MapPlace *> shown;
    for (const MapPlace &place : places) {
        const QPointF center = m_sheet.toSheet(place.world);
        if (!MapPlaceStyle::shows(place, m_sheet.scale)
            || !m_sheet.frame().adjusted(-100, -100, 100, 100).contains(center))
            continue;
        shown.push_back(&place);
        if (const double radius = MapPlaceStyle::symbolRadius(place.kind); radius > 0)
            m_space.reserve(around(center, QSizeF(2 * radius, 2 * radius)));
    }
    for (const MapPlace *place : shown)
        placeName(*place);
}

void MapLabels::placeTitles(const std::vector<MapAnnotations::Title> &titles)
{
    const MapTextSetting setting{10, QFont::Medium, false, 0, m_style.annotationText};
    const QSizeF narrowest(1, setting.sizeOf({QString()}).height());
    const auto isRoom = [this](const QRectF &rect) { return m_space.isUncovered(rect) && m_space.isFree(rect); };
    struct Fitted
    {
        QString text;
        QSizeF size;
    };
    QHash<QString, Fitted> fittedTexts;
    for (const MapAnnotations::Title &title : titles) {
        const QPointF mark = m_sheet.toSheet(title.world);
        const QPointF center = mark + QPointF(0, m_markRadius - m_markLift + title.drop + 3 + narrowest.height() / 2);
        // In a swarm nearly all end here, before their text is measured.
        if (title.text.isEmpty() || !m_sheet.rect().contains(mark) || !isRoom(around(center, narrowest)))
            continue;
        Fitted &fitted = fittedTexts[title.text];
        if (fitted.text.isEmpty()) {
            fitted.text = setting.elided(oneLine(title.text.left(mostCharacters)), widestTitle);
            fitted.size = setting.sizeOf({fitted.text});
        }
        const QRectF rect = around(center, fitted.size);
        if (!isRoom(rect))
            continue;
        m_space.reserve(rect);
        m_labels.push_back({{fitted.text}, setting, rect});
    }
}

void MapLabels::paint(QPainter &painter) const
{
    for (const Mark &mark : m_marks)
        paintMark(painter, mark);
    for (const Label &label : m_labels)
        paintLabel(painter, label);
}

const SheetArea *MapLabels::islandOf(const MapPlace &place) const
{
    for (const SheetArea &island : m_islands)
        if (!place.island.isEmpty() && island.area->name == place.island)
            return &island;
    return nullptr;
}

bool MapLabels::isNameInside(const MapPlace &place) const
{
    const SheetArea *island = islandOf(place);
    return island && m_sheet.toSheet(island->area->bounds).width() > insideWidth;
}

std::vector<QRectF> MapLabels::candidates(const MapPlace &place, const QSizeF &text) const
{
    const QPointF center = m_sheet.toSheet(place.world);
    if (place.kind == Kind::island || place.kind == Kind::islet) {
        if (isNameInside(place))
            return {around(center, text)};
        const SheetArea *island = islandOf(place);
        const QRectF bounds = island ? m_sheet.toSheet(island->area->bounds) : around(center, {8, 8});
        return besideIsland(bounds, place.side, text);
    }
    if (place.kind == Kind::contextIsland)
        return besideIsland(around(center, {16, 16}), MapPlace::Side::north, text);
    if (MapPlaceStyle::symbolOf(place, m_sheet.scale) == MapSymbol::none && place.kind != Kind::cape)
        return {around(center, text)};
    return besidePoint(center, text);
}

bool MapLabels::crossesAnotherIsland(const QRectF &rect, const MapPlace &place) const
{
    for (const SheetArea &island : m_islands)
        if (island.area->name != place.island && island.fill.intersects(rect))
            return true;
    return false;
}

bool MapLabels::isOnLand(const QPointF &point) const
{
    for (const auto *areas : {&m_islands, &m_contextLand})
        for (const SheetArea &area : *areas)
            if (area.fill.contains(point))
                return true;
    return false;
}

void MapLabels::placeName(const MapPlace &place)
{
    if (place.kind == Kind::municipality && m_shownNames.contains(place.name))
        return;
    const QPointF center = m_sheet.toSheet(place.world);
    const MapSymbol symbol = MapPlaceStyle::symbolOf(place, m_sheet.scale);
    const Mark mark{symbol, center, MapPlaceStyle::symbolRadius(place.kind),
                    MapPlaceStyle::symbolColor(place, m_style)};
    if (symbol == MapSymbol::capitalDot) {
        m_marks.push_back(mark);
        return;
    }
    const MapTextSetting setting = MapPlaceStyle::settingOf(place, m_sheet.scale, isNameInside(place), m_style);
    const QStringList lines = MapPlaceStyle::linesOf(place, m_sheet.scale, setting);
    const bool isIslandName = place.kind == Kind::island && !isNameInside(place);
    std::vector<QRectF> fitting;
    for (const QRectF &rect : candidates(place, setting.sizeOf(lines)))
        if (m_space.isFree(rect) && !(isIslandName && crossesAnotherIsland(rect, place)))
            fitting.push_back(rect);
    if (symbol != MapSymbol::none && (!fitting.empty() || place.rank < 5))
        m_marks.push_back(mark);
    if (fitting.empty())
        return;
    // An island's name that moved from side to side with the marks would soon be taken for its neighbour's.
    const auto isBetter = [&](const QRectF &rect) { return isIslandName || m_space.isUncovered(rect); };
    const auto better = std::find_if(fitting.begin(), fitting.end(), isBetter);
    const QRectF rect = better != fitting.end() ? *better : fitting.front();
    m_space.reserve(rect.adjusted(-2, -1, 2, 1));
    m_labels.push_back({lines, setting, rect});
    m_shownNames.insert(place.name);
}

void MapLabels::paintMark(QPainter &painter, const Mark &mark) const
{
    const double radius = mark.radius;
    const auto dot = [&] {
        painter.setPen(QPen(mark.color, 1.3));
        painter.setBrush(m_style.dotInside);
        painter.drawEllipse(mark.center, radius, radius);
    };
    const QPointF corners[3] = {mark.center + QPointF(0, -radius), mark.center + QPointF(radius, 0.75 * radius),
                                mark.center + QPointF(-radius, 0.75 * radius)};
    switch (mark.symbol) {
    case MapSymbol::none:
        return;
    case MapSymbol::capitalDot:
        painter.setPen(Qt::NoPen);
        painter.setBrush(mark.color);
        painter.drawEllipse(mark.center, 1.7, 1.7);
        return;
    case MapSymbol::capital:
        dot();
        painter.setPen(Qt::NoPen);
        painter.setBrush(mark.color);
        painter.drawEllipse(mark.center, 1.4, 1.4);
        return;
    case MapSymbol::city:
    case MapSymbol::town:
    case MapSymbol::contextCity:
    case MapSymbol::village:
        return dot();
    case MapSymbol::filledTriangle:
        painter.setPen(Qt::NoPen);
        painter.setBrush(mark.color);
        painter.drawPolygon(corners, 3);
        return;
    case MapSymbol::hollowTriangle:
        painter.setPen(QPen(mark.color, 1.1));
        painter.setBrush(m_style.landHalo);
        painter.drawPolygon(corners, 3);
        return;
    }
}

void MapLabels::paintLabel(QPainter &painter, const Label &label) const
{
    const QPainterPath text = label.setting.outlines(label.lines, label.rect);
    if (!label.setting.hasHalo)
        return painter.fillPath(text, label.setting.color);
    const double haloWidth = std::max(2.6, 0.27 * label.setting.pixels);
    const QColor halo = isOnLand(label.rect.center()) ? m_style.landHalo : m_style.seaHalo;
    painter.strokePath(
        text, QPen(faded(halo, label.setting.color.alphaF()), haloWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.fillPath(text, label.setting.color);
}
