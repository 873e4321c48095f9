// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Notifications/NotificationManager.h"

#include "Platform/Clock/Clock.h"
#include "Platform/Support/Platform.h"
#include "Platform/Text/Localization.h"
#include "Platform/Text/NumberFormat.h"
#include "Platform/UserNotifications/UserNotificationCenter.h"

#include <cstdio>
#include <cstdlib>

namespace {
/// Cuts the fraction off, toward zero.
qint64 wholeKilometers(double kilometers)
{
    if (kilometers >= -0x1p63 && kilometers < 0x1p63)
        return qint64(kilometers);
    // Not qFatal: where Qt logs to the system's journal nothing would reach standard error.
    std::fputs("orvalia: an alert's depth or distance is not a number of kilometres\n", stderr);
    std::abort();
}

QString windowText(qint64 windowMinutes)
{
    if (windowMinutes >= 60)
        return formatted(localized("notification.swarm.window.hours", QStringLiteral("%lld h")), {windowMinutes / 60});
    return formatted(localized("notification.swarm.window.minutes", QStringLiteral("%lld min")), {windowMinutes});
}

UserNotificationRequest notification(const MagnitudeAlert &alert)
{
    const Earthquake &earthquake = alert.earthquake;
    const MagnitudeCategory category = earthquake.magnitudeCategory();
    const bool isUrgent = category == MagnitudeCategory::strong || category == MagnitudeCategory::major;
    return {
        .identifier = earthquake.eventID(),
        .title = category.label() + QStringLiteral(" — ") + earthquake.location(),
        .body = formatted(localized("notification.magnitude.body", QStringLiteral("Magnitude %@, depth %lld km")),
                          {fixedText(earthquake.magnitude(), 1), wholeKilometers(earthquake.depth())}),
        .interruptionLevel = isUrgent ? InterruptionLevel::timeSensitive : InterruptionLevel::active,
    };
}

UserNotificationRequest notification(const ProximityAlert &alert)
{
    const Earthquake &earthquake = alert.earthquake;
    return {
        .identifier = QStringLiteral("proximity-") + earthquake.eventID(),
        .title = formatted(localized("notification.proximity.title", QStringLiteral("Earthquake near you — %@")),
                           {earthquake.location()}),
        .body = formatted(
            localized("notification.proximity.body", QStringLiteral("Magnitude %@ at %lld km from your location")),
            {fixedText(earthquake.magnitude(), 1), wholeKilometers(alert.distanceKm)}),
        .interruptionLevel = InterruptionLevel::active,
    };
}

/// Swarms sent within one second share an identifier, so that the user is left with the longest window that fired.
UserNotificationRequest notification(const SwarmAlert &alert)
{
    const auto sinceEpoch = Platform::current().clock.now().time_since_epoch();
    const qint64 seconds = std::chrono::duration_cast<std::chrono::seconds>(sinceEpoch).count();
    return {
        .identifier = QStringLiteral("swarm-%1").arg(seconds),
        .title = localized("notification.swarm.title", QStringLiteral("Seismic swarm detected")),
        .body = formatted(localized("notification.swarm.body", QStringLiteral("%lld earthquakes in the last %@")),
                          {alert.count, windowText(alert.windowMinutes)}),
        .interruptionLevel = InterruptionLevel::timeSensitive,
    };
}
}

NotificationManager &NotificationManager::shared()
{
    return Platform::shared<NotificationManager>([] { return new NotificationManager; });
}

QFuture<bool> NotificationManager::requestAuthorization()
{
    return Platform::current()
        .userNotificationCenter.requestAuthorization()
        .onCanceled([] { return false; })
        .onFailed([] { return false; });
}

void NotificationManager::send(const EarthquakeNotificationEvent &event)
{
    const auto request = std::visit([](const auto &alert) { return notification(alert); }, event);
    Platform::current().userNotificationCenter.add(request);
}
