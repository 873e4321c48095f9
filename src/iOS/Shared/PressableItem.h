// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "iOS/Shared/ControlItem.h"

/// A control that is pressed, by the pointer or by Space. A press counts when it is let go over the control.
class PressableItem : public ControlItem
{
    Q_OBJECT
    QML_ELEMENT
    /// Its name.
    Q_PROPERTY(QString text MEMBER m_text NOTIFY textChanged)
    /// It is held down, and letting go would count.
    Q_PROPERTY(bool pressed READ isPressed NOTIFY pressedChanged)
    /// The pointer is over it.
    Q_PROPERTY(bool hovered READ isHovered NOTIFY hoveredChanged)

public:
    explicit PressableItem(QQuickItem *parent = nullptr);

    bool isPressed() const { return m_isPressed; }
    bool isHovered() const { return m_isHovered; }

Q_SIGNALS:
    void textChanged();
    void pressedChanged();
    void hoveredChanged();
    void clicked();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseUngrabEvent() override;
    void hoverEnterEvent(QHoverEvent *event) override;
    void hoverLeaveEvent(QHoverEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void setPressed(bool isPressed);
    void setHovered(bool isHovered);
    void release();

    QString m_text;
    bool m_isPressed = false;
    bool m_isHovered = false;
};
