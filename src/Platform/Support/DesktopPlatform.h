// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Appearance/PortalAppearance.h"
#include "Platform/Clock/SystemClock.h"
#include "Platform/NotificationCenter/NotificationCenter.h"
#include "Platform/Permissions/StoredPermissions.h"
#include "Platform/Support/Platform.h"
#include "Platform/URLSession/NetworkURLSession.h"
#include "Platform/UserDefaults/SettingsUserDefaults.h"
#include "Platform/UserNotifications/DesktopNotificationCenter.h"
#include "Platform/Workspace/DesktopWorkspace.h"

/// The services of this machine and its desktop, installed as the program's platform for the life of this object.
class DesktopPlatform
{
public:
    /// The files that the program keeps.
    struct Files
    {
        QString settings;
        QString permissions;
        QString store;

        /// Those of the user who runs the program.
        static Files standard();
    };
    /// Makes what stands between the program and the network.
    using Detour = std::function<std::unique_ptr<URLSession>(URLSession &network)>;

    /// The desktop decides by `programId`, the name of the desktop file, what the program may do. Without `detour` the
    /// program talks to the network itself.
    DesktopPlatform(const QString &programId, const Files &files, const Detour &detour = {});
    ~DesktopPlatform();
    Q_DISABLE_COPY_MOVE(DesktopPlatform)

    /// Where the program's own permissions window is asked for.
    DesktopWorkspace &workspace() { return m_workspace; }

private:
    SystemClock m_clock;
    SettingsUserDefaults m_userDefaults;
    NetworkURLSession m_network;
    std::unique_ptr<URLSession> m_detour;
    NotificationCenter m_notificationCenter;
    StoredPermissions m_permissions;
    DesktopNotificationCenter m_userNotificationCenter;
    DesktopWorkspace m_workspace;
    PortalAppearance m_appearance;
    Platform m_platform;
};
