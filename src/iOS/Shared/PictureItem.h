// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QImage>
#include <QQuickItem>

/// An item that shows one picture painted at the window's own resolution, sharp at every scale factor. Its pictures
/// go into the renderer's shared texture, so that many small ones cost one draw. Works with every renderer.
class PictureItem : public QQuickItem
{
    Q_OBJECT

public:
    explicit PictureItem(QQuickItem *parent = nullptr);

protected:
    /// The picture, in `size` device pixels of which `scale` make one logical pixel. Neither is ever 0.
    virtual QImage picture(QSize size, qreal scale) const = 0;
    /// Has the picture painted again before the next frame.
    void repaint();

    void geometryChange(const QRectF &now, const QRectF &before) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void updatePolish() override;
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *) override;

private:
    QImage m_picture;
};
