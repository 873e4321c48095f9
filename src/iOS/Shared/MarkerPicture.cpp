// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/MarkerPicture.h"

#include "iOS/Shared/DigitCells.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <algorithm>
#include <cmath>

namespace {
constexpr float textOpacity = 0.75F;
constexpr float shadowOpacity = 0.33F;
constexpr float dotOpacity = 0.55F;
constexpr float dotRimOpacity = 0.6F;

/// A soft ring of dark behind the disc: as wide as the blur on either side of the disc's edge.
void paintShadow(QPainter &painter, const QPointF &center, double radius, double blur)
{
    const double reach = radius + 2 * blur;
    QRadialGradient gradient(center, reach);
    QColor shadow = Qt::black;
    for (const auto &[distance, opacity] : {std::pair(-2.0, 1.0), std::pair(-1.0, 0.84), std::pair(0.0, 0.5),
                                            std::pair(1.0, 0.16), std::pair(2.0, 0.0)}) {
        shadow.setAlphaF(shadowOpacity * float(opacity));
        gradient.setColorAt(std::clamp((radius + distance * blur) / reach, 0.0, 1.0), shadow);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawEllipse(center, reach, reach);
}

/// All magnitudes sit alike; a long text is drawn smaller to stay on the disc.
void paintText(QPainter &painter, const MarkerLook &look, const QPointF &center)
{
    constexpr double outlineScale = 10;
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(int(std::round(look.fontSize * outlineScale)));
    font.setWeight(QFont::Bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    const QFontMetricsF metrics(font);
    QPainterPath path;
    double width = 0;
    for (const DigitCell &cell : digitCells(look.text, metrics)) {
        path.addText(cell.x, metrics.capHeight() / 2, font, cell.text);
        width += cell.width;
    }
    const double fitting = std::min(1.0, (look.diameter - 6) * outlineScale / std::max(width, 1.0));
    const double scale = fitting / outlineScale;
    QColor color = Qt::black;
    color.setAlphaF(textOpacity);
    painter.save();
    painter.translate(center - QPointF(width * scale / 2, 0));
    painter.scale(scale, scale);
    painter.fillPath(path, color);
    painter.restore();
}

void paintDot(QPainter &painter, const MarkerLook &look, const QPointF &center)
{
    QColor fill = look.category.color();
    fill.setAlphaF(dotOpacity);
    QColor rim = Qt::white;
    rim.setAlphaF(dotRimOpacity);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawEllipse(center, look.diameter / 2, look.diameter / 2);
    painter.setPen(QPen(rim, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(center, look.diameter / 2, look.diameter / 2);
}
}

double markerMargin(const MarkerLook &look)
{
    return look.kind == MarkerLook::Kind::dot ? 1 : std::ceil(2 * look.shadowRadius);
}

void paintMarker(QPainter &painter, const MarkerLook &look, const QRectF &rect)
{
    const QPointF center = rect.center();
    painter.setRenderHint(QPainter::Antialiasing);
    if (look.kind == MarkerLook::Kind::dot)
        return paintDot(painter, look, center);
    const double radius = look.diameter / 2;
    paintShadow(painter, center, radius, look.shadowRadius);
    painter.setPen(Qt::NoPen);
    painter.setBrush(look.category.color());
    painter.drawEllipse(center, radius, radius);
    if (look.edge.alpha() > 0) {
        painter.setPen(QPen(look.edge, 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(center, radius - 0.5, radius - 0.5);
    }
    paintText(painter, look, center);
}
