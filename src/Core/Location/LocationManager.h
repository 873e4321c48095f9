// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Location/LocationService.h"
#include "Platform/Support/Published.h"

#include <memory>
#include <optional>

/// The user's rough position, for the alerts by proximity, and the state of the permission to know it. A position
/// stays valid, however old, until a newer one comes; updates once begun are never stopped.
class LocationManager : public QObject
{
    Q_OBJECT

public:
    /// Made at the first use, and with it the desktop's position service.
    static LocationManager &shared();

    /// The latest position; absent while none has come in this process.
    const std::optional<Coordinate> &userLocation() const { return m_userLocation.value(); }
    LocationAuthorizationStatus authorizationStatus() const { return m_authorizationStatus; }

    /// Asks the user; the answer arrives in `authorizationStatus`.
    void requestPermission();
    /// Begins updates under the status `authorizedAlways`, and does nothing under any other.
    void startUpdatingIfAuthorized();

Q_SIGNALS:
    void userLocationChanged();
    void authorizationStatusChanged();

private:
    LocationManager();
    void authorizationDidChange();
    void didUpdateLocations(const std::vector<Coordinate> &positions);

    std::unique_ptr<LocationService> m_service;
    Published<std::optional<Coordinate>> m_userLocation{this, &LocationManager::userLocationChanged};
    Published<LocationAuthorizationStatus> m_authorizationStatus{this, &LocationManager::authorizationStatusChanged,
                                                                 LocationAuthorizationStatus::notDetermined};
};
