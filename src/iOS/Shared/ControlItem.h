// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QQuickItem>

/// What the program's own controls stand on: a ground as large as the control, a content inside a padding, and a way to
/// the keyboard's focus. An item like any other on purpose: each template of Qt's controls tells a screen reader the
/// role of its own class, whatever role it was given.
class ControlItem : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /// Lies below the rest of the control and is as large as it.
    Q_PROPERTY(QQuickItem *background READ background WRITE setBackground NOTIFY backgroundChanged)
    /// Fills the control but for the padding.
    Q_PROPERTY(QQuickItem *contentItem READ contentItem WRITE setContentItem NOTIFY contentItemChanged)
    Q_PROPERTY(qreal leftPadding MEMBER m_leftPadding NOTIFY paddingChanged)
    Q_PROPERTY(qreal rightPadding MEMBER m_rightPadding NOTIFY paddingChanged)
    Q_PROPERTY(qreal topPadding MEMBER m_topPadding NOTIFY paddingChanged)
    Q_PROPERTY(qreal bottomPadding MEMBER m_bottomPadding NOTIFY paddingChanged)
    /// What the content would like; 0 while there is none.
    Q_PROPERTY(qreal implicitContentWidth READ implicitContentWidth NOTIFY implicitContentSizeChanged)
    Q_PROPERTY(qreal implicitContentHeight READ implicitContentHeight NOTIFY implicitContentSizeChanged)
    /// What brings the focus here: Tab, a click, both or neither.
    Q_PROPERTY(Qt::FocusPolicy focusPolicy MEMBER m_focusPolicy NOTIFY focusPolicyChanged)
    /// It has the focus and the keyboard brought it there, so that the user has to see where it is.
    Q_PROPERTY(bool visualFocus READ hasVisualFocus NOTIFY visualFocusChanged)

public:
    explicit ControlItem(QQuickItem *parent = nullptr);

    QQuickItem *background() const { return m_background; }
    QQuickItem *contentItem() const { return m_contentItem; }
    /// A control that brings its own takes the place of the one that its base has.
    void setBackground(QQuickItem *background);
    void setContentItem(QQuickItem *contentItem);
    qreal implicitContentWidth() const { return m_contentItem ? m_contentItem->implicitWidth() : 0; }
    qreal implicitContentHeight() const { return m_contentItem ? m_contentItem->implicitHeight() : 0; }
    bool hasVisualFocus() const { return m_isFocusedByKeys && hasActiveFocus(); }

Q_SIGNALS:
    void backgroundChanged();
    void contentItemChanged();
    void paddingChanged();
    void implicitContentSizeChanged();
    void focusPolicyChanged();
    void visualFocusChanged();

protected:
    /// What a press of the pointer does to the focus.
    void takeFocusByPointer();

    void focusInEvent(QFocusEvent *event) override;
    void geometryChange(const QRectF &now, const QRectF &before) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    /// Puts an item into the place of another, which shows no more.
    void replace(QPointer<QQuickItem> &place, QQuickItem *item);
    void layOut();
    void setFocusedByKeys(bool isFocusedByKeys);

    QPointer<QQuickItem> m_background;
    QPointer<QQuickItem> m_contentItem;
    qreal m_leftPadding = 0;
    qreal m_rightPadding = 0;
    qreal m_topPadding = 0;
    qreal m_bottomPadding = 0;
    Qt::FocusPolicy m_focusPolicy = Qt::NoFocus;
    bool m_isFocusedByKeys = false;
};
