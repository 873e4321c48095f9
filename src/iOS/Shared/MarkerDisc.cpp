// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/MarkerDisc.h"

#include "Platform/Text/NumberFormat.h"

#include <QPainter>

#include <cmath>

MarkerDisc::MarkerDisc(QQuickItem *parent)
    : PictureItem(parent)
{
    setMagnitude(0);
    lookChanged();
}

void MarkerDisc::setMagnitude(double magnitude)
{
    m_magnitude = magnitude;
    m_look.category = MagnitudeCategory::from(magnitude);
    m_look.text = fixedText(magnitude, 1);
    lookChanged();
}

void MarkerDisc::setGrowth(double growth)
{
    if (m_growth == growth)
        return;
    m_growth = growth;
    const MarkerLook atRest;
    m_look.diameter = std::lerp(atRest.diameter, MarkerLook::selectedDiameter, growth);
    m_look.fontSize = std::lerp(atRest.fontSize, MarkerLook::selectedFontSize, growth);
    m_look.shadowRadius = std::lerp(atRest.shadowRadius, MarkerLook::selectedShadowRadius, growth);
    lookChanged();
}

void MarkerDisc::setEdge(const QColor &edge)
{
    if (m_look.edge == edge)
        return;
    m_look.edge = edge;
    lookChanged();
}

QImage MarkerDisc::picture(QSize size, qreal scale) const
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.scale(scale, scale);
    paintMarker(painter, m_look, QRectF(QPointF(), QSizeF(size) / scale));
    return image;
}

void MarkerDisc::lookChanged()
{
    const double side = m_look.diameter + 2 * markerMargin(m_look);
    setSize({side, side});
    repaint();
    Q_EMIT changed();
}
