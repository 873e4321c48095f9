// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "iOS/Shared/PictureItem.h"

/// The still picture of a ring: a circle outlined in a gradient from red at its centre to yellow at its right edge.
class RippleCircle : public PictureItem
{
    Q_OBJECT
    QML_ELEMENT
    /// Of the middle of the line, in logical pixels.
    Q_PROPERTY(double diameter READ diameter WRITE setDiameter NOTIFY changed)
    Q_PROPERTY(double lineWidth READ lineWidth WRITE setLineWidth NOTIFY changed)

public:
    using PictureItem::PictureItem;

    double diameter() const { return m_diameter; }
    double lineWidth() const { return m_lineWidth; }
    void setDiameter(double diameter);
    void setLineWidth(double lineWidth);

Q_SIGNALS:
    void changed();

protected:
    QImage picture(QSize size, qreal scale) const override;

private:
    void lookChanged();

    double m_diameter = 0;
    double m_lineWidth = 2;
};
