// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/RippleCircle.h"

#include <QLinearGradient>
#include <QPainter>

void RippleCircle::setDiameter(double diameter)
{
    if (m_diameter == diameter)
        return;
    m_diameter = diameter;
    lookChanged();
}

void RippleCircle::setLineWidth(double lineWidth)
{
    if (m_lineWidth == lineWidth)
        return;
    m_lineWidth = lineWidth;
    lookChanged();
}

QImage RippleCircle::picture(QSize size, qreal scale) const
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    const QPointF center = QRectF(QPointF(), QSizeF(size) / scale).center();
    QLinearGradient gradient(center, center + QPointF(m_diameter / 2, 0));
    gradient.setColorAt(0, QColor::fromRgbF(1.0F, 0.231F, 0.188F, 0.75F));
    gradient.setColorAt(1, QColor::fromRgbF(1.0F, 0.8F, 0.0F, 0.3F));
    painter.setPen(QPen(gradient, m_lineWidth));
    painter.drawEllipse(center, m_diameter / 2, m_diameter / 2);
    return image;
}

void RippleCircle::lookChanged()
{
    const double side = m_diameter + m_lineWidth + 2;
    setSize({side, side});
    repaint();
    Q_EMIT changed();
}
