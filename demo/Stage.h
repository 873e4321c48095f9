// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Support/World.h"
#include "orvaliaApp.h"

#include <QImage>
#include <QQuickView>
#include <QSize>
#include <QString>

#include <functional>
#include <memory>
#include <stdexcept>

class QQuickItem;

/// A step of a scene found something else than it needs.
class StageError : public std::runtime_error
{
public:
    explicit StageError(const QString &message)
        : std::runtime_error(message.toStdString())
    {
    }
};

/// The whole program over a world of its own, on a visible screen, moved by hand: keys and pointer go through its
/// window, time through its clock, pages through its session. Items are known by their objectName, by the name that a
/// screen reader would say, or by their text; "Magnitud 4.1*" is the one whose name begins so. Waits are for something
/// and end with StageError when it does not come.
class Stage
{
public:
    /// With a main window of `size`, which open() shows.
    explicit Stage(QSize size);
    ~Stage();
    Q_DISABLE_COPY_MOVE(Stage)

    World world;

    /// Starts the program and waits for its main window.
    void open(orvaliaApp::Root root = orvaliaApp::Root::desktop);
    /// Shows a page of QML in place of the program.
    void openPage(const QUrl &file);
    /// Ends the program, as closing its last window would; open() starts it anew over the same store and settings.
    void close();

    /// Pointer, keys and picture go to the window with this title from now on.
    void useWindow(const QString &title);

    /// Whether an item of this name shows.
    bool shows(const QString &name) const;
    /// Waits until it does.
    void waitFor(const QString &name);
    /// Left button on the middle of an item.
    void press(const QString &name, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Pointer over the middle of an item.
    void hover(const QString &name);
    /// Wheel over an item, by steps of a common wheel: positive scrolls towards the end.
    void scroll(const QString &name, int steps);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void type(const QString &text);
    /// Lets time pass on the program's clock.
    void pass(std::chrono::milliseconds length);

    /// What the window shows once it has come to rest; after two seconds in motion, as it then is. The picture that
    /// was kept, where one was.
    QImage picture();
    /// Takes the picture now, for what has gone when the scene's steps are done.
    void keepPicture();

    /// The program's object of a class, for what no key and no pointer reaches.
    template<class T>
    T &object() const
    {
        if (T *const found = window().findChild<T *>())
            return *found;
        throw StageError(QLatin1String(T::staticMetaObject.className()) + QStringLiteral(" is not there"));
    }

private:
    QQuickWindow &window() const;
    void waitForWindow();
    QQuickItem *find(const QString &name) const;
    QQuickItem &require(const QString &name) const;
    /// Layouts take their places before a frame, not when something changes.
    void waitForFrame();
    void waitUntil(const std::function<bool()> &holds, const QString &what);

    QSize m_size;
    QString m_title;
    QImage m_kept;
    std::unique_ptr<orvaliaApp> m_app;
    std::unique_ptr<QQuickView> m_page;
};
