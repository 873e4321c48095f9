// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "iOS/Shared/PictureItem.h"

#include <QColor>
#include <QFont>

/// One line of plain text whose digits stand in cells of equal width. Too long a text is cut off with an ellipsis.
class NumberText : public PictureItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY fontChanged)
    /// Height of the line in logical pixels; the text stands in its middle.
    Q_PROPERTY(qreal line READ line WRITE setLine NOTIFY lineChanged)

public:
    using PictureItem::PictureItem;

    QString text() const { return m_text; }
    QColor color() const { return m_color; }
    QFont font() const { return m_font; }
    qreal line() const { return m_line; }
    void setText(const QString &text);
    void setColor(const QColor &color);
    void setFont(const QFont &font);
    void setLine(qreal line);

Q_SIGNALS:
    void textChanged();
    void colorChanged();
    void fontChanged();
    void lineChanged();

protected:
    QImage picture(QSize size, qreal scale) const override;
    void componentComplete() override;

private:
    void measure();

    QString m_text;
    QColor m_color = Qt::black;
    QFont m_font;
    qreal m_line = 0;
};
