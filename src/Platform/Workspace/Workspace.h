// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QUrl>

/// What the desktop opens for the program.
class Workspace
{
public:
    virtual ~Workspace() = default;

    /// Opens an address with whatever is in charge of its scheme; the program's own permissions window answers to
    /// `permissionsUrl()`. False when nothing took it.
    virtual bool open(const QUrl &url) = 0;

    /// Whether the desktop has notification settings of its own that can be opened.
    virtual bool hasNotificationSettings() const = 0;
    /// Opens them. False when there are none, or when they did not start.
    virtual bool openNotificationSettings() = 0;

    /// The address of the window in which the answers about notifications and position can be changed.
    static QUrl permissionsUrl() { return QUrl(QStringLiteral("orvalia:permissions")); }
};
