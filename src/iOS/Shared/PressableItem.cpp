// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/PressableItem.h"

PressableItem::PressableItem(QQuickItem *parent)
    : ControlItem(parent)
{
    setAcceptedMouseButtons(Qt::LeftButton);
    setAcceptHoverEvents(true);
}

void PressableItem::mousePressEvent(QMouseEvent *)
{
    takeFocusByPointer();
    setPressed(true);
}

void PressableItem::mouseMoveEvent(QMouseEvent *event)
{
    setPressed(contains(event->position()));
}

void PressableItem::mouseReleaseEvent(QMouseEvent *)
{
    release();
}

void PressableItem::mouseDoubleClickEvent(QMouseEvent *)
{
    // Its second press has come as a press too; what lies below must not take it for a double click of its own.
}

void PressableItem::mouseUngrabEvent()
{
    setPressed(false);
}

void PressableItem::hoverEnterEvent(QHoverEvent *event)
{
    setHovered(true);
    // What it lies on is hovered too.
    event->ignore();
}

void PressableItem::hoverLeaveEvent(QHoverEvent *event)
{
    setHovered(false);
    event->ignore();
}

void PressableItem::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Space)
        return ControlItem::keyPressEvent(event);
    setPressed(true);
}

void PressableItem::keyReleaseEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Space)
        return ControlItem::keyReleaseEvent(event);
    if (!event->isAutoRepeat())
        release();
}

void PressableItem::focusOutEvent(QFocusEvent *event)
{
    ControlItem::focusOutEvent(event);
    setPressed(false);
}

void PressableItem::setPressed(bool isPressed)
{
    if (m_isPressed == isPressed)
        return;
    m_isPressed = isPressed;
    Q_EMIT pressedChanged();
}

void PressableItem::setHovered(bool isHovered)
{
    if (m_isHovered == isHovered)
        return;
    m_isHovered = isHovered;
    Q_EMIT hoveredChanged();
}

void PressableItem::release()
{
    if (!m_isPressed)
        return;
    setPressed(false);
    Q_EMIT clicked();
}
