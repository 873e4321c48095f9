// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "iOS/Shared/MarkerPicture.h"
#include "iOS/Shared/PictureItem.h"

/// The disc of one marker as an item, the same as the marker layer paints by the thousand. It has the size of the disc
/// and its shadow: centre it.
class MarkerDisc : public PictureItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double magnitude READ magnitude WRITE setMagnitude NOTIFY changed)
    /// From 0, like all others, to 1, selected.
    Q_PROPERTY(double growth READ growth WRITE setGrowth NOTIFY changed)
    Q_PROPERTY(QColor edge READ edge WRITE setEdge NOTIFY changed)
    /// Logical pixels.
    Q_PROPERTY(double diameter READ diameter NOTIFY changed)
    /// Of the ring round a selected one, and of both together.
    Q_PROPERTY(double selectedLine READ selectedLine CONSTANT)
    Q_PROPERTY(double selectedScale READ selectedScale CONSTANT)

public:
    explicit MarkerDisc(QQuickItem *parent = nullptr);

    double magnitude() const { return m_magnitude; }
    double growth() const { return m_growth; }
    QColor edge() const { return m_look.edge; }
    double diameter() const { return m_look.diameter; }
    double selectedLine() const { return MarkerLook::selectedLine; }
    double selectedScale() const { return MarkerLook::selectedScale; }
    void setMagnitude(double magnitude);
    void setGrowth(double growth);
    void setEdge(const QColor &edge);

Q_SIGNALS:
    void changed();

protected:
    QImage picture(QSize size, qreal scale) const override;

private:
    void lookChanged();

    double m_magnitude = 0;
    double m_growth = 0;
    MarkerLook m_look;
};
