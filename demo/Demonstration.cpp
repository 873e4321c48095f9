// SPDX-License-Identifier: GPL-3.0-or-later
#include "Demonstration.h"

#include "Core/Models/Region.h"
#include "DetouredURLSession.h"
#include "LoopbackInstitute.h"
#include "Platform/Appearance/PortalAppearance.h"
#include "Platform/BackgroundActivity/ClockActivityScheduler.h"
#include "Platform/Clock/SystemClock.h"
#include "Platform/Location/DesktopLocationService.h"
#include "Platform/NotificationCenter/NotificationCenter.h"
#include "Platform/Permissions/StoredPermissions.h"
#include "Platform/Support/Platform.h"
#include "Platform/URLSession/NetworkURLSession.h"
#include "Platform/UserDefaults/SettingsUserDefaults.h"
#include "Platform/UserNotifications/DesktopNotificationCenter.h"
#include "Platform/Workspace/DesktopWorkspace.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QNetworkProxyFactory>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <unistd.h>

namespace {
/// The program's desktop file: the desktop decides by it what the program may do.
const QString programId = QStringLiteral(ORVALIA_ID);

int signalPipe[2] = {-1, -1};

void passSignalOn(int)
{
    // All that a signal handler may do. A pipe that is full already says enough.
    [[maybe_unused]] const ssize_t written = write(signalPipe[1], "", 1);
}

/// Ends the program in good order when the terminal or the session asks, so that the temporary folder goes too. The
/// notifier lives in `notifier` for as long as signals are to be heard.
void quitOnSignals(std::optional<QSocketNotifier> &notifier)
{
    if (pipe2(signalPipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    notifier.emplace(signalPipe[0], QSocketNotifier::Read);
    QObject::connect(&*notifier, &QSocketNotifier::activated, qApp, &QCoreApplication::quit);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        std::signal(signal, passSignalOn);
}

/// How often the made-up institute looks at the clock.
constexpr std::chrono::seconds institutePace{1};
}

int demonstrate(DemoCatalogue::Pace pace, orvaliaApp::Root root)
{
    std::optional<QSocketNotifier> signalNotifier;
    quitOnSignals(signalNotifier);
    const QTemporaryDir folder;
    SystemClock clock;
    DemoCatalogue catalogue(quint32(clock.now().time_since_epoch().count()), pace, clock.now());
    const LoopbackInstitute institute([&catalogue] { return catalogue.page(); });
    if (!folder.isValid() || !institute.isListening()) {
        std::fputs("The demonstration needs a temporary folder and a port of the loopback interface.\n", stderr);
        return EXIT_FAILURE;
    }

    // No proxy knows the way to this machine's loopback interface.
    QNetworkProxyFactory::setUseSystemConfiguration(false);
    NetworkURLSession network(clock);
    DetouredURLSession urlSession(network, Region::canaryIslands().dataSourceURL, institute.url());
    SettingsUserDefaults userDefaults(folder.filePath(QStringLiteral("settings.ini")));
    NotificationCenter notificationCenter;
    StoredPermissions permissions(folder.filePath(QStringLiteral("permissions.ini")));
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
        .storePath = folder.filePath(QStringLiteral("orvalia.sqlite")),
    };
    Platform::install(platform);

    // A new event is seen at once, as by a user who comes back to the program just then.
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &notificationCenter, [&] {
        if (catalogue.advance(clock.now()))
            notificationCenter.post(NotificationName::appDidBecomeActive);
    });
    timer.start(institutePace);

    auto app = std::make_unique<orvaliaApp>(root);
    QObject::connect(&workspace, &DesktopWorkspace::permissionsRequested, app.get(), &orvaliaApp::showPermissions);
    const int status = app->run();
    app.reset();
    Platform::uninstall();
    return status;
}
