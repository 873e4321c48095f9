// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/MapSheet.h"

#include <QPolygonF>

namespace {
constexpr double finePixels = 0.7;
constexpr double coarsePixels = 3;

void appendRing(SheetArea &result, const MapLine &ring, const MapSheet &sheet)
{
    if (!sheet.toSheet(ring.bounds).intersects(sheet.frame()))
        return;
    const QList<QPointF> fine = MapGeometry::thinned(sheet.toSheet(ring.points), finePixels);
    result.fill.addPolygon(QPolygonF(MapGeometry::clippedRing(fine, sheet.frame())));
    result.fill.closeSubpath();
    for (const QList<QPointF> &piece : MapGeometry::clippedLine(fine, sheet.frame())) {
        result.outline.push_back(piece);
        result.coarseOutline.push_back(MapGeometry::thinned(piece, coarsePixels));
    }
}
}

std::vector<SheetArea> visibleAreas(const std::vector<MapArea> &areas, const MapSheet &sheet)
{
    std::vector<SheetArea> result;
    for (const MapArea &area : areas) {
        if (!sheet.toSheet(area.bounds).intersects(sheet.frame()))
            continue;
        SheetArea visible;
        visible.area = &area;
        visible.fill.setFillRule(Qt::OddEvenFill);
        for (const MapLine &ring : area.rings)
            appendRing(visible, ring, sheet);
        result.push_back(std::move(visible));
    }
    return result;
}
