// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/MagnitudeCategory.h"

#include <QColor>
#include <QString>

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

    /// A selected badge: its disc, the line of the ring on the disc's edge, and the scale of both.
    static constexpr double selectedDiameter = 36;
    static constexpr double selectedFontSize = 11;
    static constexpr double selectedShadowRadius = 4;
    static constexpr double selectedLine = 2.5;
    static constexpr double selectedScale = 1.2;
    /// Its radius on the screen, ring included.
    static constexpr double selectedReach = (selectedDiameter + selectedLine) / 2 * selectedScale;
};

/// Room round the disc that its shadow takes, in logical pixels.
double markerMargin(const MarkerLook &look);

/// Paints the marker with its disc in the middle of `rect`.
void paintMarker(QPainter &painter, const MarkerLook &look, const QRectF &rect);
