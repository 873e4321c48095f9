// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/Shadow.h"

#include <QCache>
#include <QPainter>
#include <QQuickWindow>
#include <QSGNinePatchNode>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace {
/// Distance from the shape's edge at which nothing of the shadow is left to see.
int reach(qreal blur)
{
    return int(std::ceil(blur * 1.5)) + 1;
}

/// One pass of a box blur over `count` bytes that lie `stride` apart.
void boxBlur(uchar *line, int count, qsizetype stride, int radius, std::vector<uchar> &copy)
{
    const auto at = [&](int i) -> int { return i < 0 || i >= count ? 0 : copy[size_t(i)]; };
    for (int i = 0; i < count; ++i)
        copy[size_t(i)] = line[i * stride];
    int sum = 0;
    for (int i = -radius; i <= radius; ++i)
        sum += at(i);
    for (int i = 0; i < count; ++i) {
        line[i * stride] = uchar((sum + radius) / (2 * radius + 1));
        sum += at(i + radius + 1) - at(i - radius);
    }
}

/// Three box blurs come within 3 % of a Gaussian one.
void blurAlpha(QImage &alpha, qreal blur)
{
    const int radius = int(std::round((std::sqrt(blur * blur + 1) - 1) / 2));
    if (radius < 1)
        return;
    std::vector<uchar> copy(size_t(std::max(alpha.width(), alpha.height())));
    for (int pass = 0; pass < 3; ++pass) {
        for (int y = 0; y < alpha.height(); ++y)
            boxBlur(alpha.scanLine(y), alpha.width(), 1, radius, copy);
        for (int x = 0; x < alpha.width(); ++x)
            boxBlur(alpha.bits() + x, alpha.height(), alpha.bytesPerLine(), radius, copy);
    }
}

/// The part of a shape's length that has to be in the picture: the rest is stretched out of its middle.
int patchLength(qreal length, qreal radius, qreal blur)
{
    return std::min(int(std::round(length)), 2 * (reach(blur) + int(std::ceil(radius))) + 1);
}

/// The shadow of a rounded rectangle of size `shape`, which stands `reach` from every edge of the picture.
QImage patch(QSize shape, qreal radius, qreal blur, const QColor &color)
{
    const int margin = reach(blur);
    QImage alpha(shape + 2 * QSize(margin, margin), QImage::Format_Alpha8);
    alpha.fill(0);
    {
        QPainter painter(&alpha);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::black);
        painter.drawRoundedRect(alpha.rect().adjusted(margin, margin, -margin, -margin), radius, radius);
    }
    blurAlpha(alpha, blur);
    QImage result(alpha.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < alpha.height(); ++y)
        for (int x = 0; x < alpha.width(); ++x) {
            QColor pixel = color;
            pixel.setAlphaF(color.alphaF() * float(alpha.constScanLine(y)[x]) / 255.0F);
            result.setPixelColor(x, y, pixel);
        }
    return result;
}
}

Shadow::Shadow(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

template<class T>
void Shadow::assign(T &member, const T &value)
{
    if (member == value)
        return;
    member = value;
    polish();
    Q_EMIT changed();
}

void Shadow::setRadius(qreal radius)
{
    assign(m_radius, radius);
}

void Shadow::setBlur(qreal blur)
{
    assign(m_blur, blur);
}

void Shadow::setOffset(qreal offset)
{
    assign(m_offset, offset);
}

void Shadow::setColor(const QColor &color)
{
    assign(m_color, color);
}

void Shadow::geometryChange(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChange(now, before);
    polish();
}

void Shadow::updatePolish()
{
    static QCache<QString, QImage> cache(32);
    const QSize shape(patchLength(width(), m_radius, m_blur), patchLength(height(), m_radius, m_blur));
    if (shape.isEmpty()) {
        m_patch = {};
        return update();
    }
    const QString key = QStringLiteral("%1x%2 %3 %4 %5")
                            .arg(shape.width())
                            .arg(shape.height())
                            .arg(m_radius)
                            .arg(m_blur)
                            .arg(m_color.name(QColor::HexArgb));
    if (!cache.contains(key))
        cache.insert(key, new QImage(patch(shape, m_radius, m_blur, m_color)));
    m_patch = *cache.object(key);
    update();
}

QSGNode *Shadow::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    if (m_patch.isNull()) {
        delete node;
        return nullptr;
    }
    // The old node goes last: were the new one to get its address, the scene would think that nothing has changed.
    const std::unique_ptr<QSGNode> before(node);
    QSGNinePatchNode *shadow = window()->createNinePatchNode();
    shadow->setTexture(window()->createTextureFromImage(m_patch));
    const int horizontal = (m_patch.width() - 1) / 2;
    const int vertical = (m_patch.height() - 1) / 2;
    // The node does not initialise it, and draws nothing then.
    shadow->setDevicePixelRatio(1);
    shadow->setPadding(horizontal, vertical, horizontal, vertical);
    const qreal margin = reach(m_blur);
    shadow->setBounds(boundingRect().adjusted(-margin, -margin + m_offset, margin, margin + m_offset));
    shadow->update();
    return shadow;
}
