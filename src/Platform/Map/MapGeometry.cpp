// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/MapGeometry.h"

#include <optional>
#include <utility>

namespace {
enum class Edge { left, right, top, bottom };

bool isInside(const QPointF &point, Edge edge, const QRectF &frame)
{
    switch (edge) {
    case Edge::left:
        return point.x() >= frame.left();
    case Edge::right:
        return point.x() <= frame.right();
    case Edge::top:
        return point.y() >= frame.top();
    case Edge::bottom:
        return point.y() <= frame.bottom();
    }
    Q_UNREACHABLE();
}

QPointF crossing(const QPointF &a, const QPointF &b, Edge edge, const QRectF &frame)
{
    const bool isVertical = edge == Edge::left || edge == Edge::right;
    const double at = edge == Edge::left ? frame.left()
        : edge == Edge::right            ? frame.right()
        : edge == Edge::top              ? frame.top()
                                         : frame.bottom();
    const double part = isVertical ? (at - a.x()) / (b.x() - a.x()) : (at - a.y()) / (b.y() - a.y());
    return a + (b - a) * part;
}

QList<QPointF> clippedAt(const QList<QPointF> &ring, Edge edge, const QRectF &frame)
{
    QList<QPointF> result;
    result.reserve(ring.size() + 4);
    for (qsizetype i = 0; i < ring.size(); ++i) {
        const QPointF &from = ring[i == 0 ? ring.size() - 1 : i - 1];
        const QPointF &to = ring[i];
        const bool isToInside = isInside(to, edge, frame);
        if (isInside(from, edge, frame) != isToInside)
            result.append(crossing(from, to, edge, frame));
        if (isToInside)
            result.append(to);
    }
    return result;
}

/// Which part of a segment, from 0 to 1, lies in the frame (Liang and Barsky).
std::optional<std::pair<double, double>> insidePart(const QPointF &a, const QPointF &b, const QRectF &frame)
{
    double enter = 0;
    double leave = 1;
    const double steps[4] = {a.x() - b.x(), b.x() - a.x(), a.y() - b.y(), b.y() - a.y()};
    const double room[4] = {a.x() - frame.left(), frame.right() - a.x(), a.y() - frame.top(), frame.bottom() - a.y()};
    for (int edge = 0; edge < 4; ++edge) {
        if (steps[edge] == 0) {
            if (room[edge] < 0)
                return std::nullopt;
            continue;
        }
        const double part = room[edge] / steps[edge];
        if (steps[edge] < 0)
            enter = std::max(enter, part);
        else
            leave = std::min(leave, part);
    }
    if (enter > leave)
        return std::nullopt;
    return std::pair(enter, leave);
}
}

QList<QPointF> MapGeometry::clippedRing(const QList<QPointF> &ring, const QRectF &frame)
{
    QList<QPointF> result = ring;
    for (const Edge edge : {Edge::left, Edge::right, Edge::top, Edge::bottom})
        result = clippedAt(result, edge, frame);
    return result;
}

std::vector<QList<QPointF>> MapGeometry::clippedLine(const QList<QPointF> &line, const QRectF &frame)
{
    std::vector<QList<QPointF>> pieces;
    for (qsizetype i = 1; i < line.size(); ++i) {
        const QPointF step = line[i] - line[i - 1];
        const auto part = insidePart(line[i - 1], line[i], frame);
        if (!part)
            continue;
        if (pieces.empty() || part->first > 0)
            pieces.push_back({line[i - 1] + step * part->first});
        pieces.back().append(line[i - 1] + step * part->second);
    }
    return pieces;
}

QList<QPointF> MapGeometry::thinned(const QList<QPointF> &line, double distance)
{
    QList<QPointF> result;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const QPointF way = result.isEmpty() ? QPointF() : line[i] - result.back();
        const bool isEnd = i == 0 || i == line.size() - 1;
        if (isEnd || QPointF::dotProduct(way, way) >= distance * distance)
            result.append(line[i]);
    }
    return result;
}
