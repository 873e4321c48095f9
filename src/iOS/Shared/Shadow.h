// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QColor>
#include <QImage>
#include <QQuickItem>

/// The soft shadow of a rounded rectangle that fills this item. Drawn from one small blurred picture, stretched between
/// its corners, so that it looks the same with every renderer and costs nothing as the rectangle grows.
class Shadow : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /// Corner radius of the shape that throws the shadow.
    Q_PROPERTY(qreal radius MEMBER m_radius WRITE setRadius NOTIFY changed)
    /// Twice the standard deviation of the blur, in logical pixels.
    Q_PROPERTY(qreal blur MEMBER m_blur WRITE setBlur NOTIFY changed)
    /// How far down the shadow falls.
    Q_PROPERTY(qreal offset MEMBER m_offset WRITE setOffset NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER m_color WRITE setColor NOTIFY changed)

public:
    explicit Shadow(QQuickItem *parent = nullptr);

    void setRadius(qreal radius);
    void setBlur(qreal blur);
    void setOffset(qreal offset);
    void setColor(const QColor &color);

Q_SIGNALS:
    void changed();

protected:
    void geometryChange(const QRectF &now, const QRectF &before) override;
    void updatePolish() override;
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *) override;

private:
    template<class T>
    void assign(T &member, const T &value);

    qreal m_radius = 0;
    qreal m_blur = 0;
    qreal m_offset = 0;
    QColor m_color = Qt::black;
    QImage m_patch;
};
