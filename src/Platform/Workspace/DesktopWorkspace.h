// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Workspace/Workspace.h"

#include <QObject>

/// Opens addresses with the desktop's own programs.
class DesktopWorkspace : public QObject, public Workspace
{
    Q_OBJECT

public:
    using QObject::QObject;

    bool open(const QUrl &url) override;
    bool hasNotificationSettings() const override;
    bool openNotificationSettings() override;

Q_SIGNALS:
    /// permissionsUrl() was opened: whoever owns the permissions window shows it.
    void permissionsRequested();
};
