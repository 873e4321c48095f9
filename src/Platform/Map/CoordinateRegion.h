// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// A place in degrees on WGS84, longitude negative to the west.
struct Coordinate
{
    double latitude = 0;
    double longitude = 0;

    bool operator==(const Coordinate &) const = default;
};

/// The size of a region in degrees.
struct CoordinateSpan
{
    double latitudeDelta = 0;
    double longitudeDelta = 0;

    bool operator==(const CoordinateSpan &) const = default;
};

/// A region by its centre and size.
struct CoordinateRegion
{
    Coordinate center;
    CoordinateSpan span;

    bool operator==(const CoordinateRegion &) const = default;
};
