// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/Icon.h"

#include <QCache>
#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace {
/// Renders the SVG with its strokes and fills of "currentColor" in `color`.
QImage drawn(const QString &name, const QColor &color, QSize size)
{
    QFile file(QStringLiteral(":/qt/qml/orvalia/Shared/icons/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QSvgRenderer svg(file.readAll().replace("currentColor", color.name().toLatin1()));
    svg.setAspectRatioMode(Qt::KeepAspectRatio);
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setOpacity(color.alphaF());
    svg.render(&painter);
    return image;
}
}

Icon::Icon(QQuickItem *parent)
    : PictureItem(parent)
{
    setImplicitSize(20, 20);
}

void Icon::setName(const QString &name)
{
    if (m_name == name)
        return;
    m_name = name;
    repaint();
    Q_EMIT nameChanged();
}

void Icon::setColor(const QColor &color)
{
    if (m_color == color)
        return;
    m_color = color;
    repaint();
    Q_EMIT colorChanged();
}

QImage Icon::picture(QSize size, qreal) const
{
    // A list shows the same few icons hundreds of times.
    static QCache<QString, QImage> cache(256);
    const QString key =
        QStringLiteral("%1 %2 %3x%4").arg(m_name, m_color.name(QColor::HexArgb)).arg(size.width()).arg(size.height());
    if (const QImage *known = cache.object(key))
        return *known;
    QImage image = drawn(m_name, m_color, size);
    cache.insert(key, new QImage(image));
    return image;
}
