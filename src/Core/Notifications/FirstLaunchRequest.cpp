// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Notifications/FirstLaunchRequest.h"

#include "Core/Notifications/NotificationManager.h"
#include "Core/Notifications/NotificationSettings.h"
#include "Platform/Support/Async.h"
#include "Platform/UserDefaults/UserDefaults.h"

namespace {
const QString hasAskedKey = QStringLiteral("settings.hasAskedNotifPermission");
}

void requestNotificationPermissionOnFirstLaunch()
{
    UserDefaults &defaults = UserDefaults::standard();
    if (defaults.boolValue(hasAskedKey))
        return;
    // Before the question, so that one cut short is not repeated.
    defaults.setBool(hasAskedKey, true);
    NotificationSettings &settings = NotificationSettings::shared();
    whenFinished(NotificationManager::shared().requestAuthorization(), &settings,
                 [&settings](const QFuture<bool> &answer) { settings.setIsEnabled(answer.result()); });
}
