// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QPointF>

#include <vector>

/// Which of many marks need not be drawn because others lie on them. Marks are discs of one size on the screen,
/// whatever the scale; a lower number lies above a higher one. Levels stand for scales, two for each doubling.
namespace MarkerThinning {
/// The level of the closest look.
constexpr int deepestLevel = 32;
/// Level of a mark that shows at no scale: it lies at the place of another.
constexpr int never = deepestLevel + 1;

/// The level of a scale, in pixels for a degree.
int levelOf(double scale);
/// For each mark the level from which it shows: the first at which a tenth of its disc, which measures `discPixels`,
/// looks out from under the lower numbers that show. The scales of a level show its discs a little further apart.
/// Points that are not finite show never.
std::vector<quint8> levels(const std::vector<QPointF> &world, double discPixels);
}
