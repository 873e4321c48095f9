// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <vector>

/// Who has which room on a sheet. Texts and symbols hold rectangles; round marks, of which there may be a hundred
/// thousand, hold cells of a raster of four pixels.
class LabelSpace
{
public:
    explicit LabelSpace(const QSizeF &size);

    /// A text or a symbol takes a rectangle.
    void reserve(const QRectF &rect) { m_rects.push_back(rect); }
    /// A mark takes the cells that it touches.
    void cover(const QPointF &center, double radius);

    /// No text and no symbol holds any of it.
    bool isFree(const QRectF &rect) const;
    /// No mark holds any of it.
    bool isUncovered(const QRectF &rect) const;

private:
    int m_columns;
    int m_rows;
    std::vector<QRectF> m_rects;
    /// For each cell: holds part of a mark; is the centre of one.
    std::vector<bool> m_covered;
    std::vector<bool> m_centers;
};
