// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Support/Platform.h"
#include "Platform/Workspace/Workspace.h"

#include <QObject>
#include <QtQmlIntegration>

/// The desktop's own notification settings.
class DesktopSettings : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool exist READ exist CONSTANT)

public:
    using QObject::QObject;

    bool exist() const { return Platform::current().workspace.hasNotificationSettings(); }
    /// A failure is not told: the desktop's window stays away, and the program has no other way to these settings.
    Q_INVOKABLE void open() const { Platform::current().workspace.openNotificationSettings(); }
};
