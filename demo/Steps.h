// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Scenes.h"

/// What a scene's table is made of.
namespace Steps {
/// The institute's answer to the next request.
inline Scene::Step answer(const QByteArray &page)
{
    return [page](Stage &stage) { stage.world.urlSession.enqueue(page); };
}

/// Requests stay open, as on a slow network.
inline Scene::Step noAnswerYet()
{
    return [](Stage &stage) { stage.world.urlSession.holdsAnswers = true; };
}

/// A value that an earlier run saved.
inline Scene::Step saved(const char *key, const QVariant &value)
{
    return [key, value](Stage &stage) { stage.world.userDefaults.values.insert(QLatin1String(key), value); };
}

/// Left click on the item of this name.
inline Scene::Step press(const char *name, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    return [name, modifiers](Stage &stage) { stage.press(QString::fromUtf8(name), modifiers); };
}

inline Scene::Step hover(const char *name)
{
    return [name](Stage &stage) { stage.hover(QString::fromUtf8(name)); };
}

inline Scene::Step key(Qt::Key pressed, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    return [pressed, modifiers](Stage &stage) { stage.key(pressed, modifiers); };
}

/// The same key several times.
inline Scene::Step keys(int count, Qt::Key pressed)
{
    return [count, pressed](Stage &stage) {
        for (int i = 0; i < count; ++i)
            stage.key(pressed);
    };
}

/// Wheel towards the end of what lies under the item of this name.
inline Scene::Step scroll(const char *name, int steps)
{
    return [name, steps](Stage &stage) { stage.scroll(QString::fromUtf8(name), steps); };
}

inline Scene::Step type(const char *text)
{
    return [text](Stage &stage) { stage.type(QString::fromUtf8(text)); };
}

inline Scene::Step pass(std::chrono::milliseconds length)
{
    return [length](Stage &stage) { stage.pass(length); };
}

inline Scene::Step waitFor(const char *name)
{
    return [name](Stage &stage) { stage.waitFor(QString::fromUtf8(name)); };
}

inline Scene::Step inWindow(const char *title)
{
    return [title](Stage &stage) { stage.useWindow(QString::fromUtf8(title)); };
}
}
