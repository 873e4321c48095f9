// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QObject>

/// How the desktop wants its programs to look. Every answer may change at any time, and changed() then tells.
class Appearance : public QObject
{
    Q_OBJECT

public:
    enum class ColorScheme { light, dark };

    using QObject::QObject;

    /// The scheme to paint in. Never blocks: until the desktop has answered, it is read off the palette.
    virtual ColorScheme colorScheme() const = 0;
    /// Whether the user asked for less motion. False where the desktop says nothing about it.
    virtual bool reducedMotion() const = 0;
    /// Whether the desktop shows the menus of windows in a bar of its own. False until it has said so.
    virtual bool hasMenuBar() const = 0;

Q_SIGNALS:
    /// One of the answers is another one now.
    void changed();
};
