// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Notifications/NotificationFilter.h"

#include "Core/Notifications/NotificationSettings.h"
#include "Platform/Clock/Clock.h"
#include "Platform/Support/Platform.h"
#include "Platform/UserDefaults/UserDefaults.h"

#include <GeographicLib/Geodesic.hpp>

#include <QSet>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>

namespace {
/// So many events in so many minutes are a swarm.
struct SwarmRule
{
    qint64 count;
    qint64 windowMinutes;

    /// Where the moment at which the rule last fired is saved.
    QString cooldownKey() const { return QStringLiteral("swarm.lastNotified.%1in%2").arg(count).arg(windowMinutes); }
};

/// In the order of evaluation. The longest window is as long as the list of recent events reaches back.
constexpr std::array<SwarmRule, 4> swarmRules = {{{10, 10}, {30, 60}, {100, 120}, {1000, 1440}}};
constexpr double swarmCooldownSeconds = 1800.0;

/// Along the surface. A latitude beyond a pole, which a page may well hold, is nowhere on it: farther than any radius.
double distanceMeters(const Coordinate &from, const Coordinate &to)
{
    double meters = 0;
    GeographicLib::Geodesic::WGS84().Inverse(from.latitude, from.longitude, to.latitude, to.longitude, meters);
    return std::isnan(meters) ? std::numeric_limits<double>::infinity() : meters;
}

QSet<QString> eventIDs(const std::vector<EarthquakeNotificationEvent> &alertsByMagnitude)
{
    QSet<QString> identifiers;
    for (const EarthquakeNotificationEvent &alert : alertsByMagnitude)
        identifiers.insert(std::get<MagnitudeAlert>(alert).earthquake.eventID());
    return identifiers;
}

/// A saved moment in the future keeps the rule silent too: the clock was set back.
bool isCooling(const SwarmRule &rule, Instant now)
{
    const std::optional<Instant> lastNotified = UserDefaults::standard().dateValue(rule.cooldownKey());
    return lastNotified && secondsBetween(*lastNotified, now) < swarmCooldownSeconds;
}

qint64 countInWindow(const SwarmRule &rule, const std::vector<Earthquake> &earthquakes, Instant now)
{
    const Instant start = moved(now, double(rule.windowMinutes) * -60.0);
    return std::ranges::count_if(earthquakes, [start](const Earthquake &each) { return each.date() >= start; });
}
}

NotificationFilter::NotificationFilter(const NotificationSettings &settings,
                                       const std::optional<Coordinate> &userLocation)
    : m_settings(settings)
    , m_userLocation(userLocation)
{
}

std::vector<EarthquakeNotificationEvent> NotificationFilter::evaluate(
    const std::vector<Earthquake> &newEarthquakes, const std::vector<Earthquake> &recentEarthquakes) const
{
    std::vector<EarthquakeNotificationEvent> alerts;
    if (!m_settings.isEnabled())
        return alerts;
    if (m_settings.globalMagnitudeEnabled())
        appendByMagnitude(alerts, newEarthquakes);
    if (m_settings.locationNotificationsEnabled() && m_userLocation)
        appendByProximity(alerts, newEarthquakes);
    if (m_settings.swarmNotificationsEnabled())
        std::ranges::copy(evaluateSwarm(recentEarthquakes), std::back_inserter(alerts));
    return alerts;
}

void NotificationFilter::appendByMagnitude(std::vector<EarthquakeNotificationEvent> &alerts,
                                           const std::vector<Earthquake> &newEarthquakes) const
{
    const double threshold = m_settings.globalMagnitudeCategory().minimumMagnitude();
    for (const Earthquake &earthquake : newEarthquakes)
        if (earthquake.magnitude() >= threshold)
            alerts.push_back(MagnitudeAlert{earthquake});
}

void NotificationFilter::appendByProximity(std::vector<EarthquakeNotificationEvent> &alerts,
                                           const std::vector<Earthquake> &newEarthquakes) const
{
    const double radiusMeters = m_settings.locationRadiusKm() * 1000.0;
    const QSet<QString> alreadyAlerted = eventIDs(alerts);
    for (const Earthquake &earthquake : newEarthquakes) {
        if (alreadyAlerted.contains(earthquake.eventID()))
            continue;
        const double meters = distanceMeters(*m_userLocation, earthquake.coordinate());
        if (meters > radiusMeters)
            continue;
        alerts.push_back(ProximityAlert{earthquake, meters / 1000.0});
    }
}

std::vector<EarthquakeNotificationEvent> NotificationFilter::evaluateSwarm(
    const std::vector<Earthquake> &recentEarthquakes) const
{
    std::vector<EarthquakeNotificationEvent> alerts;
    const Instant now = Platform::current().clock.now();
    for (const SwarmRule &rule : swarmRules) {
        if (isCooling(rule, now))
            continue;
        const qint64 count = countInWindow(rule, recentEarthquakes, now);
        if (count < rule.count)
            continue;
        alerts.push_back(SwarmAlert{count, rule.windowMinutes});
        UserDefaults::standard().setDate(rule.cooldownKey(), now);
    }
    return alerts;
}
