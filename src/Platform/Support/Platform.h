// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QString>

#include <functional>
#include <memory>
#include <typeindex>
#include <vector>

class Appearance;
class BackgroundActivityScheduler;
class Clock;
class LocationService;
class NotificationCenter;
class Permissions;
class URLSession;
class UserDefaults;
class UserNotificationCenter;
class Workspace;

/// Everything that the program needs of the machine below it, as references to one seam each. The program, the
/// demonstration and each test install one before anything else is made; all of it belongs to whoever installs.
///
/// It also keeps the shared single instances, each made on first use: they die, last made first, when the platform
/// is uninstalled, so that no test inherits another one's state.
struct Platform
{
    using SchedulerFactory = std::function<std::unique_ptr<BackgroundActivityScheduler>(const QString &identifier)>;
    using LocationServiceFactory = std::function<std::unique_ptr<LocationService>()>;

    Clock &clock;
    UserDefaults &userDefaults;
    URLSession &urlSession;
    NotificationCenter &notificationCenter;
    UserNotificationCenter &userNotificationCenter;
    Permissions &permissions;
    Workspace &workspace;
    Appearance &appearance;
    LocationServiceFactory makeLocationService;
    SchedulerFactory makeBackgroundActivityScheduler;
    /// The file of the store, made with its folder when missing.
    QString storePath;

    /// The one in force. Stops the program when none is installed.
    static Platform &current();

    /// Puts `platform` in force; at most one at a time.
    static void install(Platform &platform);
    /// Destroys the shared instances and takes the platform out of force.
    static void uninstall();

    /// The single instance of T, made by `make` (which gives a T *) at the first call.
    template<class T, class Make>
    static T &shared(Make make)
    {
        for (const SharedInstance &instance : current().sharedInstances)
            if (instance.type == typeid(T))
                return *static_cast<T *>(instance.object.get());
        std::shared_ptr<T> made(make(), [](T *instance) { delete instance; });
        current().sharedInstances.push_back({typeid(T), made});
        return *made;
    }

    struct SharedInstance
    {
        std::type_index type;
        std::shared_ptr<void> object;
    };
    /// In the order in which they were made. Written by shared() and uninstall() alone.
    std::vector<SharedInstance> sharedInstances{};
};
