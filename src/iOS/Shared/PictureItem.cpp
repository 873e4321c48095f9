// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/PictureItem.h"

#include <QQuickWindow>
#include <QSGImageNode>

PictureItem::PictureItem(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

void PictureItem::repaint()
{
    polish();
}

void PictureItem::geometryChange(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size())
        repaint();
}

void PictureItem::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged)
        repaint();
}

void PictureItem::updatePolish()
{
    const qreal scale = window()->effectiveDevicePixelRatio();
    const QSize size = (this->size() * scale).toSize();
    m_picture = size.isEmpty() ? QImage() : picture(size, scale);
    update();
}

QSGNode *PictureItem::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    auto *image = static_cast<QSGImageNode *>(node);
    if (m_picture.isNull()) {
        delete image;
        return nullptr;
    }
    if (!image) {
        image = window()->createImageNode();
        image->setOwnsTexture(true);
        image->setFiltering(QSGTexture::Linear);
    }
    image->setTexture(window()->createTextureFromImage(m_picture, QQuickWindow::TextureCanUseAtlas));
    image->setRect(boundingRect());
    return image;
}
