// SPDX-License-Identifier: GPL-3.0-or-later
#include "Demonstration.h"

#include "Core/Models/Region.h"
#include "DetouredURLSession.h"
#include "LoopbackInstitute.h"
#include "Platform/Support/DesktopPlatform.h"

#include <QCoreApplication>
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
    const SystemClock clock;
    DemoCatalogue catalogue(quint32(clock.now().time_since_epoch().count()), pace, clock.now());
    const LoopbackInstitute institute([&catalogue] { return catalogue.page(); });
    if (!folder.isValid() || !institute.isListening()) {
        std::fputs("The demonstration needs a temporary folder and a port of the loopback interface.\n", stderr);
        return EXIT_FAILURE;
    }

    // No proxy knows the way to this machine's loopback interface.
    QNetworkProxyFactory::setUseSystemConfiguration(false);
    const DesktopPlatform::Files files{.settings = folder.filePath(QStringLiteral("settings.ini")),
                                       .permissions = folder.filePath(QStringLiteral("permissions.ini")),
                                       .store = folder.filePath(QStringLiteral("orvalia.sqlite"))};
    DesktopPlatform desktop(QStringLiteral(ORVALIA_ID), files, [&](URLSession &network) {
        return std::make_unique<DetouredURLSession>(network, Region::canaryIslands().dataSourceURL, institute.url());
    });

    // A new event is seen at once, as by a user who comes back to the program just then.
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        if (catalogue.advance(clock.now()))
            NotificationCenter::defaultCenter().post(NotificationName::appDidBecomeActive);
    });
    timer.start(institutePace);

    orvaliaApp app(root);
    QObject::connect(&desktop.workspace(), &DesktopWorkspace::permissionsRequested, &app, &orvaliaApp::showPermissions);
    return app.run();
}
