// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "iOS/Shared/PictureItem.h"

#include <QColor>

/// One icon of the family in assets/icons, drawn in one colour. 20 x 20 unless sized otherwise. It says nothing to a
/// screen reader: what it means is said by the control that holds it.
class Icon : public PictureItem
{
    Q_OBJECT
    QML_ELEMENT
    /// The file's name without ".svg", such as "bell.fill". Empty or unknown: nothing is drawn.
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

public:
    explicit Icon(QQuickItem *parent = nullptr);

    QString name() const { return m_name; }
    QColor color() const { return m_color; }
    void setName(const QString &name);
    void setColor(const QColor &color);

Q_SIGNALS:
    void nameChanged();
    void colorChanged();

protected:
    QImage picture(QSize size, qreal scale) const override;

private:
    QString m_name;
    QColor m_color = Qt::black;
};
