// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/Earthquake.h"

#include <variant>

/// A new event reached the magnitude that the user chose.
struct MagnitudeAlert
{
    Earthquake earthquake;

    bool operator==(const MagnitudeAlert &) const = default;
};

/// A new event lies within the radius that the user chose.
struct ProximityAlert
{
    Earthquake earthquake;
    /// From the user's position, along the surface.
    double distanceKm;

    bool operator==(const ProximityAlert &) const = default;
};

/// Many events in a short time.
struct SwarmAlert
{
    /// How many events lie in the window, which may be more than the rule asks for.
    qint64 count;
    qint64 windowMinutes;

    bool operator==(const SwarmAlert &) const = default;
};

/// An alert that is due: one notification of the desktop.
using EarthquakeNotificationEvent = std::variant<MagnitudeAlert, ProximityAlert, SwarmAlert>;
