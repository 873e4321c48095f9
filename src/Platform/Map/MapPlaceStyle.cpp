// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/MapPlaceStyle.h"

#include <QFontMetricsF>
#include <QTransform>

#include <cmath>

namespace {
using Kind = MapPlace::Kind;

constexpr double fontScale = 10;
constexpr double lineHeight = 1.25;

/// Thousands are set off by a point, as on the country's own maps.
QString metersText(int meters)
{
    const QString digits = QString::number(std::abs(meters));
    if (digits.size() <= 3)
        return digits + QStringLiteral(" m");
    return digits.left(digits.size() - 3) + u'.' + digits.right(3) + QStringLiteral(" m");
}

}

QFont MapTextSetting::font() const
{
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(int(std::round(pixels * fontScale)));
    font.setWeight(weight);
    font.setItalic(isItalic);
    font.setLetterSpacing(QFont::AbsoluteSpacing, spacing * fontScale);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

QSizeF MapTextSetting::sizeOf(const QStringList &lines) const
{
    const QFontMetricsF metrics(font());
    double width = 0;
    for (const QString &line : lines)
        width = std::max(width, metrics.horizontalAdvance(line) / fontScale - spacing);
    return {width, pixels * lineHeight * double(lines.size())};
}

QString MapTextSetting::elided(const QString &text, double width) const
{
    return QFontMetricsF(font()).elidedText(text, Qt::ElideRight, width * fontScale);
}

QPainterPath MapTextSetting::outlines(const QStringList &lines, const QRectF &rect) const
{
    const QFont large = font();
    const QFontMetricsF metrics(large);
    const double height = rect.height() / double(lines.size());
    QPainterPath result;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        QPainterPath line;
        line.addText(QPointF(), large, lines[i]);
        const double width = metrics.horizontalAdvance(lines[i]) / fontScale - spacing;
        const double baseline = rect.top() + height * (double(i) + 0.5) + metrics.capHeight() / fontScale / 2;
        result.addPath(QTransform::fromTranslate(rect.center().x() - width / 2, baseline)
                           .scale(1 / fontScale, 1 / fontScale)
                           .map(line));
    }
    // Letters overlap their neighbours in some faces; both then stay filled.
    result.setFillRule(Qt::WindingFill);
    return result;
}

bool MapPlaceStyle::shows(const MapPlace &place, double scale)
{
    switch (place.kind) {
    case Kind::archipelago:
        return scale <= smallestScaleOfRank(2);
    case Kind::sea:
    case Kind::country:
        return scale <= smallestScaleOfRank(4);
    case Kind::capital:
        return scale >= 70;
    case Kind::contextIsland:
    case Kind::contextCity:
    case Kind::island:
    case Kind::islet:
    case Kind::city:
    case Kind::town:
    case Kind::village:
    case Kind::volcano:
    case Kind::peak:
    case Kind::caldera:
    case Kind::seamount:
    case Kind::channel:
    case Kind::cape:
    case Kind::municipality:
        return scale >= smallestScaleOfRank(place.rank);
    }
    Q_UNREACHABLE();
}

MapSymbol MapPlaceStyle::symbolOf(const MapPlace &place, double scale)
{
    switch (place.kind) {
    case Kind::capital:
        return scale < smallestScaleOfRank(3) ? MapSymbol::capitalDot : MapSymbol::capital;
    case Kind::city:
        return MapSymbol::city;
    case Kind::town:
        return MapSymbol::town;
    case Kind::village:
        return MapSymbol::village;
    case Kind::contextCity:
        return MapSymbol::contextCity;
    case Kind::volcano:
    case Kind::seamount:
        return MapSymbol::filledTriangle;
    case Kind::peak:
    case Kind::caldera:
        return MapSymbol::hollowTriangle;
    case Kind::sea:
    case Kind::archipelago:
    case Kind::country:
    case Kind::contextIsland:
    case Kind::island:
    case Kind::islet:
    case Kind::channel:
    case Kind::cape:
    case Kind::municipality:
        return MapSymbol::none;
    }
    Q_UNREACHABLE();
}

double MapPlaceStyle::symbolRadius(Kind kind)
{
    switch (kind) {
    case Kind::capital:
        return 3.6;
    case Kind::city:
        return 3.2;
    case Kind::town:
    case Kind::contextCity:
        return 2.6;
    case Kind::village:
        return 2.1;
    case Kind::volcano:
    case Kind::peak:
    case Kind::caldera:
    case Kind::seamount:
        return 4;
    case Kind::sea:
    case Kind::archipelago:
    case Kind::country:
    case Kind::contextIsland:
    case Kind::island:
    case Kind::islet:
    case Kind::channel:
    case Kind::cape:
    case Kind::municipality:
        return 0;
    }
    Q_UNREACHABLE();
}

QColor MapPlaceStyle::symbolColor(const MapPlace &place, const BaseMapStyle &style)
{
    switch (symbolOf(place, smallestScaleOfRank(3))) {
    case MapSymbol::contextCity:
        return style.contextText;
    case MapSymbol::filledTriangle:
        return place.kind == Kind::seamount ? style.seamount : style.volcano;
    case MapSymbol::hollowTriangle:
        return style.volcano;
    case MapSymbol::none:
    case MapSymbol::capital:
    case MapSymbol::city:
    case MapSymbol::town:
    case MapSymbol::village:
    case MapSymbol::capitalDot:
        return style.townText;
    }
    Q_UNREACHABLE();
}

MapTextSetting MapPlaceStyle::settingOf(const MapPlace &place, double scale, bool isNameInside,
                                        const BaseMapStyle &style)
{
    switch (place.kind) {
    case Kind::sea:
        return {14, QFont::Normal, true, 4, faded(style.seaText, 0.85), true, false};
    case Kind::channel:
        return {10, QFont::Normal, true, 0.3, faded(style.seaText, 0.85), false, false};
    case Kind::archipelago:
        return {13, QFont::Bold, false, 1.6, style.islandText, true};
    case Kind::country:
        return {11, QFont::Normal, false, 2.2, style.contextText, true};
    case Kind::contextIsland:
        return {11.5, QFont::DemiBold, false, 0, style.contextText};
    case Kind::contextCity:
        return {10, QFont::Normal, false, 0, style.contextText};
    case Kind::island:
        if (isNameInside) {
            const double size = grownWithScale(scale, 300, 2100, 15, 21);
            return {size, QFont::Bold, false, 0.28 * size, faded(style.islandText, 0.55), true};
        }
        return {13, QFont::Bold, false, 0, style.islandText};
    case Kind::islet:
        return {10.5, QFont::DemiBold, false, 0, style.islandText};
    case Kind::capital:
        return {13, QFont::Bold, false, 0, style.townText};
    case Kind::city:
        return {12, QFont::Bold, false, 0, style.townText};
    case Kind::town:
        return {11.5, QFont::Medium, false, 0, style.townText};
    case Kind::village:
        return {10.5, QFont::Medium, false, 0, style.townText};
    case Kind::volcano:
    case Kind::peak:
    case Kind::caldera:
        return {10.5, QFont::Medium, true, 0, style.volcanoText};
    case Kind::seamount:
        return {10.5, QFont::Medium, true, 0, style.seamountText};
    case Kind::cape:
        return {10, QFont::Normal, true, 0, faded(style.townText, 0.8)};
    case Kind::municipality:
        return {9.5, QFont::Normal, false, 1.6, style.municipalityText, true};
    }
    Q_UNREACHABLE();
}

QStringList MapPlaceStyle::linesOf(const MapPlace &place, double scale, const MapTextSetting &setting)
{
    QString name = setting.isCapitals ? place.name.toUpper() : place.name;
    if (place.kind == Kind::sea)
        return name.split(u' ');
    if (place.kind == Kind::channel && name.contains(QStringLiteral(" – "))) {
        name.replace(name.indexOf(u' '), 1, u'\n');
        name.replace(QStringLiteral(" – "), QStringLiteral(" –\n"));
        return name.split(u'\n');
    }
    if (place.elevationMeters && *place.elevationMeters > 0 && scale >= 700)
        name += u' ' + metersText(*place.elevationMeters);
    return {name};
}
