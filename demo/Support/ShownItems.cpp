// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/ShownItems.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QTest>
#include <QWheelEvent>

namespace {
void collect(QQuickItem *item, const std::function<bool(QQuickItem *)> &matches, QList<QQuickItem *> &found)
{
    if (!item->isVisible())
        return;
    if (matches(item))
        found.append(item);
    for (QQuickItem *child : item->childItems())
        collect(child, matches, found);
}
}

QList<QQuickItem *> ShownItems::all(const QQuickWindow &window, const std::function<bool(QQuickItem *)> &matches)
{
    QList<QQuickItem *> found;
    collect(window.contentItem(), matches, found);
    return found;
}

QString ShownItems::spokenName(QQuickItem *item)
{
    const QAccessibleInterface *const accessible = QAccessible::queryAccessibleInterface(item);
    return accessible ? accessible->text(QAccessible::Name) : QString();
}

QPoint ShownItems::middle(const QQuickItem *item)
{
    return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
}

void ShownItems::turnWheel(QQuickItem *item, int angle)
{
    QQuickWindow *const window = item->window();
    const QPoint place = middle(item);
    QWheelEvent event(place, window->mapToGlobal(place), {}, {0, angle}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(window, &event);
}

void ShownItems::type(QQuickWindow &window, const QString &text)
{
    for (const QChar character : text)
        QTest::sendKeyEvent(QTest::Click, &window, Qt::Key_unknown, character, Qt::NoModifier);
}
