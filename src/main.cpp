// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Appearance/PortalAppearance.h"
#include "Platform/BackgroundActivity/ClockActivityScheduler.h"
#include "Platform/Clock/SystemClock.h"
#include "Platform/Location/DesktopLocationService.h"
#include "Platform/NotificationCenter/NotificationCenter.h"
#include "Platform/Permissions/StoredPermissions.h"
#include "Platform/Session/FirstInstance.h"
#include "Platform/Support/Platform.h"
#include "Platform/URLSession/NetworkURLSession.h"
#include "Platform/UserDefaults/SettingsUserDefaults.h"
#include "Platform/UserNotifications/DesktopNotificationCenter.h"
#include "Platform/Workspace/DesktopWorkspace.h"
#include "orvaliaApp.h"

#include <QDBusConnection>
#include <QGuiApplication>
#include <QStandardPaths>

namespace {
/// Name of the program and of its folders.
const QString programName = QStringLiteral("orvalia");
/// Name of its desktop file, by which the desktop decides what the program may do.
const QString programId = QStringLiteral(ORVALIA_ID);

QString storePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/orvalia.sqlite");
}
}

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(programName);
    QGuiApplication::setApplicationVersion(QStringLiteral(ORVALIA_VERSION));
    QGuiApplication::setDesktopFileName(programId);

    const FirstInstance instance(QDBusConnection::sessionBus(), programId);
    if (instance.handsOver())
        return EXIT_SUCCESS;

    SystemClock clock;
    SettingsUserDefaults userDefaults(SettingsUserDefaults::standardPath());
    NetworkURLSession urlSession(clock);
    NotificationCenter notificationCenter;
    StoredPermissions permissions(StoredPermissions::standardPath());
    DesktopNotificationCenter userNotificationCenter(permissions, QDBusConnection::sessionBus(), programId);
    DesktopWorkspace workspace;
    PortalAppearance appearance(QDBusConnection::sessionBus());
    Platform platform{
        .clock = clock,
        .userDefaults = userDefaults,
        .urlSession = urlSession,
        .notificationCenter = notificationCenter,
        .userNotificationCenter = userNotificationCenter,
        .permissions = permissions,
        .workspace = workspace,
        .appearance = appearance,
        .makeLocationService =
            [&] {
                return std::make_unique<DesktopLocationService>(permissions, QDBusConnection::systemBus(), programId);
            },
        .makeBackgroundActivityScheduler =
            [&](const QString &) { return std::make_unique<ClockActivityScheduler>(clock); },
        .storePath = storePath(),
    };

    Platform::install(platform);
    auto app = std::make_unique<orvaliaApp>();
    QObject::connect(&workspace, &DesktopWorkspace::permissionsRequested, app.get(), &orvaliaApp::showPermissions);
    QObject::connect(&instance, &FirstInstance::startedAgain, app.get(), &orvaliaApp::comeToFront);
    const int status = app->run();
    app.reset();
    Platform::uninstall();
    return status;
}
