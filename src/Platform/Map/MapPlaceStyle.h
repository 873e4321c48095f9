// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Map/BaseMapData.h"
#include "Platform/Map/BaseMapStyle.h"

#include <QFont>
#include <QPainterPath>
#include <QSizeF>
#include <QStringList>

/// What stands at a place beside its name.
enum class MapSymbol { none, capital, city, town, village, contextCity, capitalDot, filledTriangle, hollowTriangle };

/// How a text of the map is set. Its outlines come from a font of ten times the size, so that halves of a pixel count
/// and the screen's resolution does not.
struct MapTextSetting
{
    /// Logical pixels.
    double pixels = 11;
    QFont::Weight weight = QFont::Normal;
    bool isItalic = false;
    /// Logical pixels between letters.
    double spacing = 0;
    QColor color;
    bool isCapitals = false;
    /// A rim in the colour of the ground, so that lines behind do not cut the letters.
    bool hasHalo = true;

    /// Room of some lines of text, halo not included.
    QSizeF sizeOf(const QStringList &lines) const;
    /// `text`, with an ellipsis in place of what does not fit into `width`.
    QString elided(const QString &text, double width) const;
    /// The glyphs of the lines, each centred in its share of `rect`.
    QPainterPath outlines(const QStringList &lines, const QRectF &rect) const;

private:
    QFont font() const;
};

/// What each kind of place looks like at a scale.
namespace MapPlaceStyle {
/// Whether the place is on a map of this scale at all, room allowing.
bool shows(const MapPlace &place, double scale);
/// `none` for what is a name alone. A capital is a mere dot from afar.
MapSymbol symbolOf(const MapPlace &place, double scale);
/// Half the side of the room that the kind's symbol takes; 0 for kinds without one.
double symbolRadius(MapPlace::Kind kind);
QColor symbolColor(const MapPlace &place, const BaseMapStyle &style);
/// `isNameInside`: the name stands on its island and not beside it.
MapTextSetting settingOf(const MapPlace &place, double scale, bool isNameInside, const BaseMapStyle &style);
/// The name as the map writes it, with the height of a summit where there is room for it.
QStringList linesOf(const MapPlace &place, double scale, const MapTextSetting &setting);
}
