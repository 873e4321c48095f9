// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Notifications/EarthquakeNotificationEvent.h"

#include <optional>
#include <vector>

class NotificationSettings;

/// The rules that turn freshly stored events into alerts. Made for one evaluation and dropped.
class NotificationFilter
{
public:
    /// Reads `settings` at each evaluation. Without a `userLocation` there are no alerts by proximity.
    NotificationFilter(const NotificationSettings &settings, const std::optional<Coordinate> &userLocation);

    /// The alerts that are due: first those by magnitude, then those by proximity, each in the order of
    /// `newEarthquakes`, then the swarms from the shortest window up. An event that raises an alert by magnitude raises
    /// none by proximity. `recentEarthquakes` are the stored events of the last 24 hours, the new ones included, in any
    /// order; only the swarm rules look at them. A swarm rule that fires saves the moment and then stays silent for 30
    /// minutes; nothing else is written, and nothing at all while the master switch is off.
    std::vector<EarthquakeNotificationEvent> evaluate(const std::vector<Earthquake> &newEarthquakes,
                                                      const std::vector<Earthquake> &recentEarthquakes) const;

private:
    void appendByMagnitude(std::vector<EarthquakeNotificationEvent> &alerts,
                           const std::vector<Earthquake> &newEarthquakes) const;
    /// `alerts` so far holds those by magnitude alone.
    void appendByProximity(std::vector<EarthquakeNotificationEvent> &alerts,
                           const std::vector<Earthquake> &newEarthquakes) const;
    std::vector<EarthquakeNotificationEvent> evaluateSwarm(const std::vector<Earthquake> &recentEarthquakes) const;

    const NotificationSettings &m_settings;
    std::optional<Coordinate> m_userLocation;
};
