// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Map/BaseMapPainter.h"
#include "Platform/Map/LabelSpace.h"
#include "Platform/Map/MapPlaceStyle.h"
#include "Platform/Map/MapSheet.h"

#include <QSet>
#include <QStringList>

class QPainter;

/// The names and symbols of a sheet. Places claim their room greedily in the order given: one that fits nowhere has
/// no label. Room free of marks is preferred; a name is not given up for a mark's sake.
class MapLabels
{
public:
    MapLabels(const MapSheet &sheet, const BaseMapStyle &style, const std::vector<SheetArea> &islands,
              const std::vector<SheetArea> &contextLand);

    /// Keeps free the strips at the window's edges where the figures of the graticule stand.
    void reserveGraticuleFigures(const MapCamera &window);
    /// Keeps free rectangles of the window.
    void reserveCovers(const MapCamera &window, const std::vector<QRectF> &covers);
    void avoid(const MapAnnotations &annotations);
    void place(const std::vector<MapPlace> &places);
    /// A title goes under its mark, and only where it meets no label and no mark.
    void placeTitles(const std::vector<MapAnnotations::Title> &titles);
    void paint(QPainter &painter) const;

private:
    struct Label
    {
        QStringList lines;
        MapTextSetting setting;
        QRectF rect;
    };
    struct Mark
    {
        MapSymbol symbol;
        QPointF center;
        double radius;
        QColor color;
    };

    const SheetArea *islandOf(const MapPlace &place) const;
    bool isNameInside(const MapPlace &place) const;
    std::vector<QRectF> candidates(const MapPlace &place, const QSizeF &text) const;
    bool crossesAnotherIsland(const QRectF &rect, const MapPlace &place) const;
    bool isOnLand(const QPointF &point) const;
    void placeName(const MapPlace &place);
    void paintMark(QPainter &painter, const Mark &mark) const;
    void paintLabel(QPainter &painter, const Label &label) const;

    const MapSheet &m_sheet;
    const BaseMapStyle &m_style;
    const std::vector<SheetArea> &m_islands;
    const std::vector<SheetArea> &m_contextLand;
    LabelSpace m_space;
    double m_markRadius = 0;
    double m_markLift = 0;
    std::vector<Label> m_labels;
    std::vector<Mark> m_marks;
    QSet<QString> m_shownNames;
};
