// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/BaseMapStyle.h"

#include "Platform/Map/WebMercator.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr size_t commonBand = 2; // 1000 m

/// Counted in whole steps, so that 28.3 stays 28.3 after some additions.
std::vector<double> multiples(double step, double from, double to)
{
    std::vector<double> result;
    for (double i = std::ceil(from / step); i * step < to; ++i)
        result.push_back(i * step);
    return result;
}

QColor rgb(QRgb value, double opacity = 1)
{
    QColor color = QColor::fromRgb(value);
    color.setAlphaF(float(opacity));
    return color;
}

BaseMapStyle lightStyle()
{
    BaseMapStyle style;
    style.sea = {rgb(0xD6E8F0), rgb(0xC7DEEA), rgb(0xB8D3E3), rgb(0xA9C8DB), rgb(0x9CBDD3), rgb(0x90B3CB)};
    style.bandEdge = rgb(0xFFFFFF, 0.22);
    style.shoreGlow = {rgb(0xFFFFFF, 0.10), rgb(0xFFFFFF, 0.14), rgb(0xFFFFFF, 0.20)};
    style.islandLand = rgb(0xF5EDD9);
    style.contextLand = rgb(0xEDE9DE);
    style.innerShade = rgb(0xC4AE7E, 0.10);
    style.islandCoast = rgb(0x6C8391);
    style.contextCoast = rgb(0x9AA9B2, 0.90);
    style.municipalBorder = rgb(0x9C8F74, 0.75);
    style.countryBorder = rgb(0xA79C86, 0.80);
    style.graticule = rgb(0x3F6C86, 0.16);
    style.landHalo = rgb(0xF8F6EE, 0.90);
    style.seaHalo = rgb(0xC9DFEA, 0.85);
    style.townText = rgb(0x24313A);
    style.dotInside = rgb(0xFFFFFF);
    style.islandText = rgb(0x4A3B22);
    style.contextText = rgb(0x5F6768);
    style.seaText = rgb(0x3D6E8C);
    style.volcano = rgb(0xA2592F);
    style.volcanoText = rgb(0x7A4B2A);
    style.seamount = rgb(0xA8452F);
    style.seamountText = rgb(0x7A3D2E);
    style.municipalityText = rgb(0x85784F, 0.80);
    style.annotationText = rgb(0x33424C);
    return style;
}

BaseMapStyle darkStyle()
{
    BaseMapStyle style;
    style.sea = {rgb(0x1D3B4D), rgb(0x193446), rgb(0x162E3E), rgb(0x132837), rgb(0x102330), rgb(0x0E1F2B)};
    style.bandEdge = rgb(0x7FB3D0, 0.10);
    style.shoreGlow = {rgb(0x5FA8CC, 0.035), rgb(0x5FA8CC, 0.05), rgb(0x5FA8CC, 0.08)};
    style.islandLand = rgb(0x3A484D);
    style.contextLand = rgb(0x283237);
    style.innerShade = rgb(0x0A1216, 0.13);
    style.islandCoast = rgb(0x8FB4C4, 0.95);
    style.contextCoast = rgb(0x5A7582, 0.80);
    style.municipalBorder = rgb(0x75868C, 0.65);
    style.countryBorder = rgb(0x67777E, 0.70);
    style.graticule = rgb(0x9CC4D8, 0.10);
    style.landHalo = rgb(0x1B262B, 0.90);
    style.seaHalo = rgb(0x0F212D, 0.85);
    style.townText = rgb(0xE7EEF0);
    style.dotInside = rgb(0x1B272D);
    style.islandText = rgb(0xF2E4C4);
    style.contextText = rgb(0x9AA7AC);
    style.seaText = rgb(0x7FB0CB);
    style.volcano = rgb(0xE59A68);
    style.volcanoText = rgb(0xE8AE86);
    style.seamount = rgb(0xF08A6C);
    style.seamountText = rgb(0xF0987E);
    style.municipalityText = rgb(0x9DABAF, 0.80);
    style.annotationText = rgb(0xC9D3D9);
    return style;
}

QColor mixed(const QColor &a, const QColor &b, double partOfB)
{
    const auto mix = [partOfB](float x, float y) { return float(x + (y - x) * partOfB); };
    return QColor::fromRgbF(mix(a.redF(), b.redF()), mix(a.greenF(), b.greenF()), mix(a.blueF(), b.blueF()));
}
}

const BaseMapStyle &BaseMapStyle::of(MapAppearance appearance)
{
    static const BaseMapStyle light = lightStyle();
    static const BaseMapStyle dark = darkStyle();
    return appearance == MapAppearance::light ? light : dark;
}

QColor BaseMapStyle::seaTone(size_t band, double scale) const
{
    return mixed(sea[band], sea[commonBand], grownWithScale(scale, 250, 1150, 0, 0.7));
}

double grownWithScale(double scale, double from, double to, double low, double high)
{
    const double part = std::log(scale / from) / std::log(to / from);
    return low + (high - low) * std::clamp(part, 0.0, 1.0);
}

QColor faded(QColor color, double factor)
{
    color.setAlphaF(float(color.alphaF() * factor));
    return color;
}

double shoreWidthFactor(double scale)
{
    return grownWithScale(scale, 63, 2500, 0.55, 1.6);
}

double graticuleStep(double degreesAcross)
{
    constexpr double steps[] = {0.002, 0.005, 0.01, 0.025, 0.05, 0.1, 0.25, 0.5, 1, 2, 5, 10};
    for (const double step : steps)
        if (degreesAcross / step <= 9)
            return step;
    return 20;
}

std::vector<double> graticuleMeridians(const QRectF &world, double step)
{
    return multiples(step, world.left(), world.right());
}

std::vector<double> graticuleParallels(const QRectF &world, double step)
{
    return multiples(step, WebMercator::toCoordinate(world.bottomLeft()).latitude,
                     WebMercator::toCoordinate(world.topLeft()).latitude);
}

double smallestScaleOfRank(int rank)
{
    constexpr double scales[] = {0, 22, 55, 140, 330, 760, 1500, 1400};
    return scales[std::clamp(rank, 0, 7)];
}
