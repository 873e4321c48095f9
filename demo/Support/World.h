// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/NotificationCenter/NotificationCenter.h"
#include "Platform/Support/Platform.h"
#include "Support/FakeClock.h"
#include "Support/FakePlatform.h"
#include "Support/FakeURLSession.h"
#include "Support/FakeUserDefaults.h"

#include <QPointer>
#include <QTemporaryDir>

/// Everything below the program, faked and installed for the life of one test. Its end destroys every shared instance.
class World
{
public:
    World();
    ~World();
    Q_DISABLE_COPY_MOVE(World)

    FakeClock clock;
    FakeUserDefaults userDefaults;
    FakeURLSession urlSession;
    NotificationCenter notificationCenter;
    FakeUserNotificationCenter userNotificationCenter;
    FakePermissions permissions;
    FakeWorkspace workspace;
    FakeAppearance appearance;
    /// The service that the program made last; null before it made one, or after it dropped it.
    QPointer<FakeLocationService> locationService;
    /// The status that the next location service begins with.
    LocationAuthorizationStatus initialLocationStatus = LocationAuthorizationStatus::notDetermined;
    /// The schedulers made so far. Each belongs to whoever made it.
    std::vector<FakeBackgroundActivityScheduler *> schedulers;
    /// Called when one of them is ended.
    std::function<void()> onInvalidate = [] {};
    /// For the files of this test.
    QTemporaryDir folder;

    /// Runs what the event loop holds and what the clock says is due, and what follows from it, eight turns deep.
    void settle();

private:
    Platform m_platform;
};
