// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Workspace/DesktopWorkspace.h"

#include <QDesktopServices>
#include <QMetaMethod>
#include <QProcess>
#include <QStandardPaths>

namespace {
/// The command of the desktop in use that shows its notification settings; empty where it has none.
QStringList notificationSettingsCommand()
{
    struct Entry
    {
        const char *desktop;
        QStringList command;
    };
    static const Entry entries[] = {
        {"GNOME", {QStringLiteral("gnome-control-center"), QStringLiteral("notifications")}},
        {"KDE", {QStringLiteral("systemsettings"), QStringLiteral("kcm_notifications")}},
        {"XFCE", {QStringLiteral("xfce4-notifyd-config")}},
    };
    const QByteArrayList desktops = qgetenv("XDG_CURRENT_DESKTOP").toUpper().split(':');
    for (const Entry &entry : entries)
        if (desktops.contains(entry.desktop) && !QStandardPaths::findExecutable(entry.command.first()).isEmpty())
            return entry.command;
    return {};
}
}

bool DesktopWorkspace::open(const QUrl &url)
{
    if (url != permissionsUrl())
        return QDesktopServices::openUrl(url);
    Q_EMIT permissionsRequested();
    return isSignalConnected(QMetaMethod::fromSignal(&DesktopWorkspace::permissionsRequested));
}

bool DesktopWorkspace::hasNotificationSettings() const
{
    return !notificationSettingsCommand().isEmpty();
}

bool DesktopWorkspace::openNotificationSettings()
{
    const QStringList command = notificationSettingsCommand();
    return !command.isEmpty() && QProcess::startDetached(command.first(), command.mid(1));
}
