// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Map/CoordinateRegion.h"

#include <QObject>

#include <vector>

/// The user's standing answer to "may this program know where you are?".
enum class LocationAuthorizationStatus { notDetermined, restricted, denied, authorizedAlways, authorizedWhenInUse };

/// The desktop's position service and the permission to use it. Both signals are emitted from the event loop, never
/// from inside a call. Errors of the service are silent: a position in hand stays.
class LocationService : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual LocationAuthorizationStatus authorizationStatus() const = 0;
    /// Smallest movement between two updates, in metres.
    virtual void setDistanceFilter(double meters) = 0;
    /// Asks the user for the permission, once in the life of the installation.
    virtual void requestAlwaysAuthorization() = 0;
    /// Begins a stream of positions. Repeated calls are harmless.
    virtual void startUpdatingLocation() = 0;

Q_SIGNALS:
    /// Comes once after construction, and whenever the permission changes.
    void authorizationChanged();
    /// The latest position last.
    void locationsUpdated(const std::vector<Coordinate> &positions);
};
