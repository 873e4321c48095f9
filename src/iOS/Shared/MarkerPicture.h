// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/MagnitudeCategory.h"

#include <QImage>
#include <QSizeF>

class QPainter;

/// What a marker looks like.
struct MarkerLook
{
    enum class Kind {
        badge, ///< a disc in the category's colour with the magnitude on it
        dot ///< a small translucent disc with a light rim and no text
    };

    Kind kind = Kind::badge;
    MagnitudeCategory category;
    /// The magnitude as shown; unused on a dot.
    QString text;
    /// Logical pixels.
    double diameter = 28;
    double fontSize = 9;
    double shadowRadius = 1;
    /// Line inside the disc's edge; transparent for none.
    QColor edge = Qt::transparent;
};

/// Room round the disc that its shadow takes, in logical pixels.
double markerMargin(const MarkerLook &look);

/// Paints the marker with its disc in the middle of `rect`.
void paintMarker(QPainter &painter, const MarkerLook &look, const QRectF &rect);
