// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Location/LocationManager.h"

#include "Platform/Support/Platform.h"

namespace {
constexpr double distanceFilterMeters = 500.0;
}

LocationManager &LocationManager::shared()
{
    return Platform::shared<LocationManager>([] { return new LocationManager; });
}

LocationManager::LocationManager()
    : m_service(Platform::current().makeLocationService())
{
    connect(m_service.get(), &LocationService::authorizationChanged, this, &LocationManager::authorizationDidChange);
    connect(m_service.get(), &LocationService::locationsUpdated, this, &LocationManager::didUpdateLocations);
    m_service->setDistanceFilter(distanceFilterMeters);
    m_authorizationStatus = m_service->authorizationStatus();
}

void LocationManager::requestPermission()
{
    m_service->requestAlwaysAuthorization();
}

void LocationManager::startUpdatingIfAuthorized()
{
    if (authorizationStatus() == LocationAuthorizationStatus::authorizedAlways)
        m_service->startUpdatingLocation();
}

void LocationManager::authorizationDidChange()
{
    // The status of this moment, published from the event loop: whoever reads in between sees the old one.
    const LocationAuthorizationStatus status = m_service->authorizationStatus();
    const auto publish = [this, status] {
        m_authorizationStatus = status;
        startUpdatingIfAuthorized();
    };
    QMetaObject::invokeMethod(this, publish, Qt::QueuedConnection);
}

void LocationManager::didUpdateLocations(const std::vector<Coordinate> &positions)
{
    if (positions.empty())
        return;
    const auto publish = [this, latest = positions.back()] { m_userLocation = latest; };
    QMetaObject::invokeMethod(this, publish, Qt::QueuedConnection);
}
