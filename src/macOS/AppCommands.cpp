// SPDX-License-Identifier: GPL-3.0-or-later
#include "macOS/AppCommands.h"

#include "Platform/NotificationCenter/NotificationCenter.h"
#include "macOS/MainWindows.h"
#include "macOS/NavigationState.h"

void AppCommands::refresh() const
{
    NotificationCenter::defaultCenter().post(NotificationName::appDidBecomeActive);
}

void AppCommands::toggleSidebar() const
{
    NotificationCenter::defaultCenter().post(NotificationName::toggleSidebar);
}

void AppCommands::openSettings() const
{
    NotificationCenter::defaultCenter().post(NotificationName::openSettings);
}

void AppCommands::navigate(const QString &id) const
{
    NavigationState::shared().select(id);
}

void AppCommands::openInfo() const
{
    NotificationCenter::defaultCenter().post(NotificationName::openInfo);
}

void AppCommands::openFilter() const
{
    NotificationCenter::defaultCenter().post(NotificationName::openFilter);
}

void AppCommands::openWindow() const
{
    Q_EMIT MainWindows::shared().newWindowWanted();
}
