// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QList>
#include <QPoint>
#include <QQuickItem>
#include <QQuickWindow>
#include <QString>

#include <functional>

/// What a window shows, found and moved as its user would.
namespace ShownItems {
/// Those of the window and its popups that `matches`, each before its children and before what lies above it. What
/// still fades in or out counts.
QList<QQuickItem *> all(const QQuickWindow &window, const std::function<bool(QQuickItem *)> &matches);
/// What a screen reader calls the item; empty when it says nothing of it.
QString spokenName(QQuickItem *item);
/// The item's middle, in its window.
QPoint middle(const QQuickItem *item);
/// Turns the mouse's wheel over the item's middle; 120 is a notch up.
void turnWheel(QQuickItem *item, int angle);
/// Types into whatever has the focus.
void type(QQuickWindow &window, const QString &text);
}
