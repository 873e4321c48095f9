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
    /// Logical pixels, as are the next two.
    Q_PROPERTY(double diameter READ diameter WRITE setDiameter NOTIFY changed)
    Q_PROPERTY(double fontSize READ fontSize WRITE setFontSize NOTIFY changed)
    Q_PROPERTY(double shadowRadius READ shadowRadius WRITE setShadowRadius NOTIFY changed)
    Q_PROPERTY(QColor edge READ edge WRITE setEdge NOTIFY changed)

public:
    explicit MarkerDisc(QQuickItem *parent = nullptr);

    double magnitude() const { return m_magnitude; }
    double diameter() const { return m_look.diameter; }
    double fontSize() const { return m_look.fontSize; }
    double shadowRadius() const { return m_look.shadowRadius; }
    QColor edge() const { return m_look.edge; }
    void setMagnitude(double magnitude);
    void setDiameter(double diameter);
    void setFontSize(double fontSize);
    void setShadowRadius(double shadowRadius);
    void setEdge(const QColor &edge);

Q_SIGNALS:
    void changed();

protected:
    QImage picture(QSize size, qreal scale) const override;

private:
    void lookChanged();

    double m_magnitude = 0;
    MarkerLook m_look;
};
