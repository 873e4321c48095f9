// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Map/BaseMapData.h"
#include "Platform/Map/WebMercator.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

/// The default view as it must look, drawn from the data alone: islands in the sea, and discs. Where things are, how
/// large, and of which hue is compared; texts, shadows and the tints of the sea are too grey to have one.
class DrawnView
{
public:
    explicit DrawnView(const QSize &size)
        : m_picture(size, QImage::Format_RGB32)
        , m_coasts(size, QImage::Format_ARGB32_Premultiplied)
    {
        m_picture.fill(QColor(0xC7DEEA));
        m_coasts.fill(Qt::transparent);
        m_discs = m_coasts;
        QPainterPath islands;
        const auto data = BaseMapData::load();
        for (const MapArea &island : data->islands)
            for (const MapLine &ring : island.rings) {
                QPolygonF outline;
                for (const QPointF &point : ring.points)
                    outline.append(place(point));
                islands.addPolygon(outline);
            }
        QPainter(&m_picture).fillPath(islands, QColor(0xF5EDD9));
        QPainter(&m_coasts).strokePath(islands, QPen(Qt::black, 8));
    }

    /// A disc, with a white ring along its edge where the ring has a width. Its text is not looked at.
    void addDisc(const Coordinate &coordinate, const QColor &color, double diameter, double ringWidth = 0)
    {
        const QPointF center = place(WebMercator::toWorld(coordinate));
        const auto fill = [&](QImage &image, double radius, const QColor &fillColor) {
            QPainter painter(&image);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setCompositionMode(QPainter::CompositionMode_Source);
            painter.setPen(Qt::NoPen);
            painter.setBrush(fillColor);
            painter.drawEllipse(center, radius, radius);
        };
        fill(m_picture, diameter / 2 + ringWidth / 2, Qt::white);
        fill(m_picture, diameter / 2 - ringWidth / 2, color);
        fill(m_coasts, diameter / 2 + 4, Qt::transparent);
        fill(m_discs, diameter / 2 + 4, Qt::black);
        fill(m_discs, diameter / 4 + 2, Qt::transparent);
    }

    /// The part of the pixels along the coasts, and of those in and around the discs, that have another hue.
    double differenceOfCoasts(const QImage &seen) const { return difference(seen, m_coasts); }
    double differenceOfDiscs(const QImage &seen) const { return difference(seen, m_discs); }

private:
    /// The region is as large as it fits below a toolbar of 52 pixels.
    QPointF place(const QPointF &world) const
    {
        const QRectF region(WebMercator::toWorld(Coordinate{32.3, -20.8}),
                            WebMercator::toWorld(Coordinate{24.3, -10.8}));
        const QRectF free = QRectF(m_picture.rect()).adjusted(0, 52, 0, 0);
        const double scale = std::min(free.width() / region.width(), free.height() / region.height());
        return free.center() + (world - region.center()) * scale;
    }

    double difference(const QImage &seen, const QImage &mask) const
    {
        const auto differ = [](QRgb a, QRgb b) {
            return std::abs(qRed(a) - qBlue(a) - qRed(b) + qBlue(b)) > 30
                || std::abs(qRed(a) - qGreen(a) - qRed(b) + qGreen(b)) > 30;
        };
        int looked = 0;
        int different = 0;
        for (int y = 0; y < mask.height(); ++y)
            for (int x = 0; x < mask.width(); ++x)
                if (qAlpha(mask.pixel(x, y)) > 127) {
                    ++looked;
                    different += differ(seen.pixel(x, y), m_picture.pixel(x, y)) ? 1 : 0;
                }
        return double(different) / looked;
    }

    QImage m_picture;
    /// What is compared, by being opaque.
    QImage m_coasts;
    QImage m_discs;
};
