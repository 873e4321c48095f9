// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Support/Instant.h"

#include <QString>

#include <optional>

/// One row of the source page after parsing. Exists only between the parser and the repository.
struct ParsedEarthquake
{
    /// The institute's event number; never empty when it comes from the parser.
    QString eventID;
    /// Origin time.
    Instant date;
    /// Decimal degrees.
    double latitude = 0;
    /// Decimal degrees, negative to the west.
    double longitude = 0;
    /// Kilometres; negative above sea level.
    double depth = 0;
    double magnitude = 0;
    /// The page's label of the magnitude scale, such as "mbLg"; "—" when the page leaves it empty.
    QString magnitudeType;
    /// Highest reported intensity as the page writes it, such as "III-IV"; absent when none was reported.
    std::optional<QString> maxIntensity;
    /// Place name as the page writes it; may be empty.
    QString location;

    bool operator==(const ParsedEarthquake &) const = default;
};
