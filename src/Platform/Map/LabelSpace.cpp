// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/LabelSpace.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr double cell = 4;

int cellOf(double pixel)
{
    return int(std::floor(pixel / cell));
}
}

LabelSpace::LabelSpace(const QSizeF &size)
    : m_columns(cellOf(size.width()) + 1)
    , m_rows(cellOf(size.height()) + 1)
    , m_covered(size_t(m_columns) * size_t(m_rows))
    , m_centers(m_covered.size())
{
}

void LabelSpace::cover(const QPointF &center, double radius)
{
    const QRectF sheet(-radius, -radius, m_columns * cell + 2 * radius, m_rows * cell + 2 * radius);
    if (!sheet.contains(center))
        return;
    const int centerColumn = cellOf(center.x());
    const int centerRow = cellOf(center.y());
    if (centerColumn >= 0 && centerColumn < m_columns && centerRow >= 0 && centerRow < m_rows) {
        // A second mark in the same cell would cover the same cells but for the rounding.
        const size_t index = size_t(centerRow) * size_t(m_columns) + size_t(centerColumn);
        if (m_centers[index])
            return;
        m_centers[index] = true;
    }
    for (int row = std::max(0, cellOf(center.y() - radius)); row <= std::min(m_rows - 1, cellOf(center.y() + radius));
         ++row) {
        for (int column = std::max(0, cellOf(center.x() - radius));
             column <= std::min(m_columns - 1, cellOf(center.x() + radius)); ++column) {
            const QPointF way = QPointF((column + 0.5) * cell, (row + 0.5) * cell) - center;
            if (QPointF::dotProduct(way, way) <= radius * radius)
                m_covered[size_t(row) * size_t(m_columns) + size_t(column)] = true;
        }
    }
}

bool LabelSpace::isFree(const QRectF &rect) const
{
    return std::none_of(m_rects.begin(), m_rects.end(), [&](const QRectF &held) { return held.intersects(rect); });
}

bool LabelSpace::isUncovered(const QRectF &rect) const
{
    for (int row = std::max(0, cellOf(rect.top())); row <= std::min(m_rows - 1, cellOf(rect.bottom())); ++row)
        for (int column = std::max(0, cellOf(rect.left())); column <= std::min(m_columns - 1, cellOf(rect.right()));
             ++column)
            if (m_covered[size_t(row) * size_t(m_columns) + size_t(column)])
                return false;
    return true;
}
