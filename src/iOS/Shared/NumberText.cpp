// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/NumberText.h"

#include "iOS/Shared/DigitCells.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace {
qreal widthOf(const std::vector<DigitCell> &cells)
{
    qreal width = 0;
    for (const DigitCell &cell : cells)
        width += cell.width;
    return width;
}

/// The longest beginning of `text` that fits `width` with an ellipsis behind it; `text` itself where it fits.
QString fitted(QString text, const QFontMetricsF &metrics, qreal width)
{
    const QString whole = text;
    while (!text.isEmpty()) {
        QString shown = text.size() == whole.size() ? whole : text + QChar(0x2026);
        if (widthOf(digitCells(shown, metrics)) <= width + 0.5)
            return shown;
        text.chop(1);
    }
    return text;
}
}

void NumberText::setText(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    measure();
    Q_EMIT textChanged();
}

void NumberText::setColor(const QColor &color)
{
    if (m_color == color)
        return;
    m_color = color;
    repaint();
    Q_EMIT colorChanged();
}

void NumberText::setFont(const QFont &font)
{
    if (m_font == font)
        return;
    m_font = font;
    // As Qt Quick draws its own text: outlines as designed, not fitted to the pixel grid.
    m_font.setHintingPreference(QFont::PreferNoHinting);
    measure();
    Q_EMIT fontChanged();
}

void NumberText::setLine(qreal line)
{
    if (qFuzzyCompare(m_line, line))
        return;
    m_line = line;
    measure();
    Q_EMIT lineChanged();
}

void NumberText::componentComplete()
{
    PictureItem::componentComplete();
    measure();
}

void NumberText::measure()
{
    if (!isComponentComplete())
        return;
    const QFontMetricsF metrics(m_font);
    setImplicitSize(std::ceil(widthOf(digitCells(m_text, metrics))), m_line > 0 ? m_line : std::ceil(metrics.height()));
    repaint();
}

QImage NumberText::picture(QSize size, qreal scale) const
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const QFontMetricsF metrics(m_font);
    // As outlines: glyphs of the painter come out heavier than the scene's own text beside them.
    QPainterPath outlines;
    outlines.setFillRule(Qt::WindingFill);
    const qreal baseline = std::round((height() - metrics.height()) / 2 + metrics.ascent());
    for (const DigitCell &cell : digitCells(fitted(m_text, metrics, width()), metrics))
        outlines.addText(QPointF(cell.x, baseline), m_font, cell.text);
    painter.fillPath(outlines, m_color);
    return image;
}
