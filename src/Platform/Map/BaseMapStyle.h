// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QColor>
#include <QRectF>

#include <array>
#include <vector>

/// Light ground by day, dark ground in the dark scheme.
enum class MapAppearance { light, dark };

/// Colours of the base map, and what changes with the scale. Scales are in pixels for a degree of longitude: the
/// whole archipelago at 79, one island at some 900, a village above 2000.
class BaseMapStyle
{
public:
    /// The one style of each scheme, made at the first use.
    static const BaseMapStyle &of(MapAppearance appearance);

    /// Sea floor at depths of 0, 200, 1000, 2000, 3000 and 4000 m.
    std::array<QColor, 6> sea;
    QColor bandEdge;
    /// From the widest stroke to the narrowest.
    std::array<QColor, 3> shoreGlow;
    QColor islandLand;
    QColor contextLand;
    QColor innerShade;
    QColor islandCoast;
    QColor contextCoast;
    QColor municipalBorder;
    QColor countryBorder;
    QColor graticule;
    QColor landHalo;
    QColor seaHalo;
    QColor townText;
    QColor dotInside;
    QColor islandText;
    QColor contextText;
    QColor seaText;
    QColor volcano;
    QColor volcanoText;
    QColor seamount;
    QColor seamountText;
    QColor municipalityText;
    QColor annotationText;

    /// Tone of a depth band: from close by the bands draw together, since they are too coarse to be looked at.
    QColor seaTone(size_t band, double scale) const;
};

/// Grows from `low` at scale `from` to `high` at scale `to`, evenly for each doubling of the scale, and stays there.
double grownWithScale(double scale, double from, double to, double low, double high);
/// `color` with its opacity multiplied by `factor`.
QColor faded(QColor color, double factor);
/// Width factor of shore glow and inner shade.
double shoreWidthFactor(double scale);
/// Distance in degrees between the lines of the graticule: the smallest that shows at most nine meridians over
/// `degreesAcross`.
double graticuleStep(double degreesAcross);
/// The meridians that cross a piece of the world, and the parallels, in degrees: whole multiples of `step`.
std::vector<double> graticuleMeridians(const QRectF &world, double step);
std::vector<double> graticuleParallels(const QRectF &world, double step);
/// The scale from which a place of this rank shows.
double smallestScaleOfRank(int rank);
