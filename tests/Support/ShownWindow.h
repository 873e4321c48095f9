// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/ParsedEarthquake.h"
#include "Core/Persistence/ModelContainer.h"
#include "Support/World.h"

#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>

#include <memory>

/// The main window over a store in memory and the faked machine, shown as the program shows it. What the source
/// answers comes from `world.urlSession`: queue it before show(). Its end fails the test when QML has warned.
class ShownWindow
{
public:
    ShownWindow();
    ~ShownWindow();
    Q_DISABLE_COPY_MOVE(ShownWindow)

    World world;
    ModelContainer container{{.isStoredInMemoryOnly = true}};

    /// Queues a page of these events as the next answer.
    void enqueuePage(const QList<ParsedEarthquake> &rows);
    /// Opens the window and lets it settle. False when it did not load or QML warned.
    bool show(QSize size = {1100, 720});
    /// Goes on in the visible window with this title, which shows after the main window. False when there is none.
    bool enter(QAnyStringView title);
    /// Opens another window of the program, by its file below the folder of QML modules, and goes on in it.
    bool open(const char *file, QAnyStringView title);
    /// Opens the phone-sized root in place of the main window.
    bool showTabs(QSize size);
    /// Opens a second main window and goes on in it.
    bool showAnother();
    /// What is asked and done from now on concerns this window, active or not.
    void lookAt(QQuickWindow &window) { m_window = &window; }
    /// Lets time pass for the program, then lets the window settle.
    void pass(std::chrono::milliseconds time);
    /// Lets the window take in what happened. What fades out may still be there: ask for its going by QTRY_VERIFY.
    void settle();

    QQuickWindow &window() const { return *m_window; }
    /// The item in the window, or in a popup of it, with this object name; null when there is none that shows.
    QQuickItem *item(QAnyStringView objectName) const;
    /// All of this object name that show.
    QList<QQuickItem *> items(QAnyStringView objectName) const;
    /// All of this C++ class that show, such as "QQuickMenuItem".
    QList<QQuickItem *> itemsOf(const char *className) const;
    /// The text of the item with this object name; null when none shows.
    QString textOf(QAnyStringView objectName) const;
    /// Whether a text reads like this, whatever a screen reader hears.
    bool shows(QAnyStringView text) const;
    /// The item that a screen reader calls by this name; null when there is none that shows.
    QQuickItem *named(QAnyStringView accessibleName) const;
    /// A click in the middle of the item.
    void click(QQuickItem *item, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Presses the item as a screen reader does.
    void pressByReader(QQuickItem *item);
    /// Drags the mouse in small steps.
    void drag(const QPoint &from, const QPoint &by);
    /// Turns the mouse's wheel over the middle of the item; 120 is a notch up.
    void turnWheel(QQuickItem *item, int angle);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void type(QAnyStringView text);

    /// Warnings of QML so far.
    const QStringList &warnings() const { return m_warnings; }

private:
    void setSize(QSize size);
    bool showRoot(const char *file);
    bool activate();

    QStringList m_warnings;
    QQmlApplicationEngine m_engine;
    QQuickWindow *m_window = nullptr;
};

/// What is wrong with the items of a window, popups included: texts that are not plain, and what can be pressed or
/// focused but has no name for a screen reader. One line for each.
QStringList faultsOfItems(const QQuickWindow &window);
