// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "iOS/Shared/MarkerPicture.h"

#include <QHash>
#include <QImage>

#include <vector>

/// The pictures of all markers in one image, one cell for each category and text that occurs.
class MarkerAtlas
{
public:
    /// Columns of cells; a cell's column and row then fit a byte each, as a vertex carries them.
    static constexpr int columns = 64;

    /// `like` tells all but category and text.
    explicit MarkerAtlas(const MarkerLook &like = {});

    /// The number of the cell of an event of this magnitude; a new one where it is the first of its kind. When a
    /// page full of odd magnitudes has filled every cell, the markers that come later show their category alone.
    int cellOf(double magnitude);

    int cellCount() const { return int(m_looks.size()); }
    int rows() const { return (cellCount() + columns - 1) / columns; }
    /// Side of a cell in logical pixels: the disc and the room for its shadow.
    double cellSide() const;
    /// All cells at `devicePixelRatio`, each at a whole number of pixels.
    QImage image(double devicePixelRatio) const;
    /// Pixels of the side of a cell in that image.
    int cellPixels(double devicePixelRatio) const;

private:
    int cellOf(MagnitudeCategory category, const QString &text);

    MarkerLook m_like;
    std::vector<MarkerLook> m_looks;
    QHash<std::pair<int, QString>, int> m_cells;
    /// By the bits of a magnitude: most events share a few of them, and making texts is slow.
    QHash<quint64, int> m_cellsOfMagnitudes;
};
