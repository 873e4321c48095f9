// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/MarkerAtlas.h"

#include "Platform/Text/NumberFormat.h"

#include <QPainter>

#include <bit>
#include <cmath>

namespace {
/// As many as a texture of modest size can hold.
constexpr int mostCells = MarkerAtlas::columns * 32;
}

MarkerAtlas::MarkerAtlas(const MarkerLook &like)
    : m_like(like)
{
    for (const MagnitudeCategory category : MagnitudeCategory::allCases)
        cellOf(category, {});
}

int MarkerAtlas::cellOf(double magnitude)
{
    const auto bits = std::bit_cast<quint64>(magnitude);
    if (const auto known = m_cellsOfMagnitudes.constFind(bits); known != m_cellsOfMagnitudes.constEnd())
        return *known;
    const bool hasText = m_like.kind == MarkerLook::Kind::badge;
    const int cell = cellOf(MagnitudeCategory::from(magnitude), hasText ? fixedText(magnitude, 1) : QString());
    m_cellsOfMagnitudes.insert(bits, cell);
    return cell;
}

int MarkerAtlas::cellOf(MagnitudeCategory category, const QString &text)
{
    const std::pair key(int(category.band()), text);
    if (const auto known = m_cells.constFind(key); known != m_cells.constEnd())
        return *known;
    if (cellCount() >= mostCells)
        return m_cells.value({key.first, QString()});
    const int cell = cellCount();
    m_looks.push_back(m_like);
    m_looks.back().category = category;
    m_looks.back().text = text;
    m_cells.insert(key, cell);
    return cell;
}

double MarkerAtlas::cellSide() const
{
    return m_like.diameter + 2 * markerMargin(m_like);
}

int MarkerAtlas::cellPixels(double devicePixelRatio) const
{
    return int(std::ceil(cellSide() * devicePixelRatio));
}

QImage MarkerAtlas::image(double devicePixelRatio) const
{
    const int pixels = cellPixels(devicePixelRatio);
    QImage image(columns * pixels, rows() * pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.scale(devicePixelRatio, devicePixelRatio);
    const double side = pixels / devicePixelRatio;
    for (int cell = 0; cell < cellCount(); ++cell) {
        const int column = cell % columns;
        const int row = cell / columns;
        paintMarker(painter, m_looks[size_t(cell)], {column * side, row * side, side, side});
    }
    return image;
}
