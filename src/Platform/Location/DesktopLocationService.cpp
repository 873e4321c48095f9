// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Location/DesktopLocationService.h"

#include "Platform/Support/DBusCall.h"

#include <utility>

DesktopLocationService::DesktopLocationService(Permissions &permissions, const QDBusConnection &systemBus,
                                               const QString &desktopId, QObject *parent)
    : LocationService(parent)
    , m_permissions(permissions)
    , m_systemBus(systemBus)
    , m_desktopId(desktopId)
{
    connect(&permissions, &Permissions::answerChanged, this, &DesktopLocationService::answerChanged,
            Qt::QueuedConnection);
    QMetaObject::invokeMethod(this, &DesktopLocationService::authorizationChanged, Qt::QueuedConnection);
}

LocationAuthorizationStatus DesktopLocationService::authorizationStatus() const
{
    if (m_isRefused)
        return LocationAuthorizationStatus::denied;
    switch (m_permissions.answer(Permissions::Subject::location)) {
    case Permissions::Answer::notDetermined:
        return LocationAuthorizationStatus::notDetermined;
    case Permissions::Answer::denied:
        return LocationAuthorizationStatus::denied;
    case Permissions::Answer::authorized:
        return LocationAuthorizationStatus::authorizedAlways;
    }
    Q_UNREACHABLE();
}

void DesktopLocationService::requestAlwaysAuthorization()
{
    // The answer arrives as a change of the permission.
    m_permissions.request(Permissions::Subject::location);
}

void DesktopLocationService::answerChanged(Permissions::Subject subject)
{
    if (subject != Permissions::Subject::location)
        return;
    if (m_source && authorizationStatus() != LocationAuthorizationStatus::authorizedAlways) {
        m_source->stopUpdates();
        // Started again before the service has answered to the stop, the one of Qt 6.4 would crash.
        delete std::exchange(m_source, nullptr);
    }
    Q_EMIT authorizationChanged();
}

void DesktopLocationService::startUpdatingLocation()
{
    if (m_source || m_isLooking)
        return;
    // Qt's plugin waits for the service's answers, which may be long in coming where the service hangs or has to be
    // started. So the plugin is made only once the service has answered here.
    m_isLooking = true;
    QDBusMessage get = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.GeoClue2"), QStringLiteral("/org/freedesktop/GeoClue2/Manager"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    get << QStringLiteral("org.freedesktop.GeoClue2.Manager") << QStringLiteral("AvailableAccuracyLevel");
    callAsync(m_systemBus, get, this, [this](const auto &answer) {
        m_isLooking = false;
        if (!answer.isError() && authorizationStatus() == LocationAuthorizationStatus::authorizedAlways)
            begin();
    });
}

void DesktopLocationService::begin()
{
    m_source = QGeoPositionInfoSource::createDefaultSource({{QStringLiteral("desktopId"), m_desktopId}}, this);
    if (!m_source)
        return;
    m_source->setPreferredPositioningMethods(QGeoPositionInfoSource::NonSatellitePositioningMethods);
    connect(m_source, &QGeoPositionInfoSource::positionUpdated, this, &DesktopLocationService::takePosition,
            Qt::QueuedConnection);
    connect(m_source, &QGeoPositionInfoSource::errorOccurred, this, &DesktopLocationService::takeError,
            Qt::QueuedConnection);
    m_source->startUpdates();
}

void DesktopLocationService::takePosition(const QGeoPositionInfo &position)
{
    const QGeoCoordinate place = position.coordinate();
    if (!place.isValid() || authorizationStatus() != LocationAuthorizationStatus::authorizedAlways)
        return;
    if (m_delivered && m_delivered->distanceTo(place) < m_distanceFilterMeters)
        return;
    m_delivered = place;
    Q_EMIT locationsUpdated({Coordinate{place.latitude(), place.longitude()}});
}

void DesktopLocationService::takeError(QGeoPositionInfoSource::Error error)
{
    if (error != QGeoPositionInfoSource::AccessError)
        return;
    m_isRefused = true;
    Q_EMIT authorizationChanged();
}
