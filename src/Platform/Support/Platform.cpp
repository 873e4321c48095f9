// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Support/Platform.h"

#include "Platform/NotificationCenter/NotificationCenter.h"
#include "Platform/URLSession/URLSession.h"
#include "Platform/UserDefaults/UserDefaults.h"

namespace {
Platform *installed = nullptr;
}

Platform &Platform::current()
{
    if (!installed)
        qFatal("no platform is installed");
    return *installed;
}

void Platform::install(Platform &platform)
{
    Q_ASSERT(!installed);
    installed = &platform;
}

void Platform::uninstall()
{
    while (!installed->sharedInstances.empty())
        installed->sharedInstances.pop_back();
    installed = nullptr;
}

UserDefaults &UserDefaults::standard()
{
    return Platform::current().userDefaults;
}

URLSession &URLSession::shared()
{
    return Platform::current().urlSession;
}

NotificationCenter &NotificationCenter::defaultCenter()
{
    return Platform::current().notificationCenter;
}
