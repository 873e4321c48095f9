// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/World.h"

#include <QCoreApplication>
#include <QEvent>

World::World()
    : m_platform{
        .clock = clock,
        .userDefaults = userDefaults,
        .urlSession = urlSession,
        .notificationCenter = notificationCenter,
        .userNotificationCenter = userNotificationCenter,
        .permissions = permissions,
        .workspace = workspace,
        .appearance = appearance,
        .makeLocationService =
            [this] {
                auto service = std::make_unique<FakeLocationService>();
                service->status = initialLocationStatus;
                locationService = service.get();
                return service;
            },
        .makeBackgroundActivityScheduler =
            [this](const QString &identifier) {
                auto scheduler = std::make_unique<FakeBackgroundActivityScheduler>();
                scheduler->identifier = identifier;
                scheduler->onInvalidate = [this] { onInvalidate(); };
                schedulers.push_back(scheduler.get());
                return scheduler;
            },
        .storePath = folder.filePath(QStringLiteral("store/orvalia.sqlite")),
    }
{
    Platform::install(m_platform);
}

World::~World()
{
    Platform::uninstall();
}

void World::settle()
{
    for (int turn = 0; turn < 8; ++turn) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        clock.settle();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
