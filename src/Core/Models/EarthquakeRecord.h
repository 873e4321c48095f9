// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/Earthquake.h"

#include <QSharedData>

#include <limits>
#include <string>

/// What an Earthquake points at: kept small, since there may be a million. Only the store changes it, and only `id`.
class EarthquakeRecord : public QSharedData
{
public:
    /// `maxIntensityIndex` of an event without one.
    static constexpr quint32 noIntensity = std::numeric_limits<quint32>::max();

    /// Among InternedTexts::placeNames().
    quint32 locationIndex = 0;
    PersistentIdentifier id = 0;
    Instant date;
    Instant fetchedAt;
    double latitude = 0;
    double longitude = 0;
    double depth = 0;
    double magnitude = 0;
    /// Among InternedTexts::labels(), like the next one.
    quint32 magnitudeTypeIndex = 0;
    quint32 maxIntensityIndex = noIntensity;
    /// In UTF-8: the institute's numbers fit into the string itself, without an allocation of their own.
    std::string eventID;
};
