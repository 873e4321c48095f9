// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QObject>

/// How the desktop wants its programs to look. Both answers may change at any time, and changed() then tells.
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

Q_SIGNALS:
    /// Either answer is another one now.
    void changed();
};
