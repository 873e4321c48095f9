// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/ControlItem.h"

ControlItem::ControlItem(QQuickItem *parent)
    : QQuickItem(parent)
{
    connect(this, &ControlItem::paddingChanged, this, &ControlItem::layOut);
    connect(this, &ControlItem::focusPolicyChanged, this,
            [this] { setActiveFocusOnTab((m_focusPolicy & Qt::TabFocus) != 0); });
}

void ControlItem::setBackground(QQuickItem *background)
{
    if (m_background == background)
        return;
    replace(m_background, background);
    if (m_background)
        m_background->setZ(-1);
    layOut();
    Q_EMIT backgroundChanged();
}

void ControlItem::setContentItem(QQuickItem *contentItem)
{
    if (m_contentItem == contentItem)
        return;
    replace(m_contentItem, contentItem);
    if (m_contentItem) {
        connect(m_contentItem, &QQuickItem::implicitWidthChanged, this, &ControlItem::implicitContentSizeChanged);
        connect(m_contentItem, &QQuickItem::implicitHeightChanged, this, &ControlItem::implicitContentSizeChanged);
    }
    layOut();
    Q_EMIT contentItemChanged();
    Q_EMIT implicitContentSizeChanged();
}

void ControlItem::takeFocusByPointer()
{
    if ((m_focusPolicy & Qt::ClickFocus) == 0)
        return;
    setFocusedByKeys(false);
    forceActiveFocus(Qt::MouseFocusReason);
}

void ControlItem::focusInEvent(QFocusEvent *event)
{
    QQuickItem::focusInEvent(event);
    // What comes back with its window, or after a popup, is as it was.
    const Qt::FocusReason reason = event->reason();
    if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
        setFocusedByKeys(reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason
                         || reason == Qt::ShortcutFocusReason);
}

void ControlItem::geometryChange(const QRectF &now, const QRectF &before)
{
    QQuickItem::geometryChange(now, before);
    layOut();
}

void ControlItem::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemActiveFocusHasChanged)
        Q_EMIT visualFocusChanged();
}

void ControlItem::replace(QPointer<QQuickItem> &place, QQuickItem *item)
{
    if (place) {
        place->disconnect(this);
        place->setParentItem(nullptr);
    }
    place = item;
    if (item)
        item->setParentItem(this);
}

void ControlItem::layOut()
{
    if (m_background)
        m_background->setSize(size());
    if (m_contentItem) {
        m_contentItem->setPosition({m_leftPadding, m_topPadding});
        m_contentItem->setSize({width() - m_leftPadding - m_rightPadding, height() - m_topPadding - m_bottomPadding});
    }
}

void ControlItem::setFocusedByKeys(bool isFocusedByKeys)
{
    if (m_isFocusedByKeys == isFocusedByKeys)
        return;
    m_isFocusedByKeys = isFocusedByKeys;
    Q_EMIT visualFocusChanged();
}
