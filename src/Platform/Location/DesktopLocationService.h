// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Location/LocationService.h"
#include "Platform/Permissions/Permissions.h"

#include <QDBusConnection>
#include <QGeoPositionInfoSource>

#include <optional>

/// The desktop's position service (GeoClue, through Qt Positioning), under the program's own permission. The service
/// is touched at the first start of updates and not before. Where there is none, the remembered answer stands and no
/// position comes. A service that refuses access makes the status `denied` until the program ends.
class DesktopLocationService : public LocationService
{
    Q_OBJECT

public:
    /// Looks for the service on `systemBus`, connected or not. `desktopId` is the name of the program's desktop file,
    /// without its suffix: the service decides by it.
    DesktopLocationService(Permissions &permissions, const QDBusConnection &systemBus, const QString &desktopId,
                           QObject *parent = nullptr);

    LocationAuthorizationStatus authorizationStatus() const override;
    void setDistanceFilter(double meters) override { m_distanceFilterMeters = meters; }
    void requestAlwaysAuthorization() override;
    void startUpdatingLocation() override;

private:
    void answerChanged(Permissions::Subject subject);
    void begin();
    void takePosition(const QGeoPositionInfo &position);
    void takeError(QGeoPositionInfoSource::Error error);

    Permissions &m_permissions;
    QDBusConnection m_systemBus;
    QString m_desktopId;
    double m_distanceFilterMeters = 0;
    bool m_isLooking = false;
    bool m_isRefused = false;
    /// Null while no updates are wanted, or no service is there to give them.
    QGeoPositionInfoSource *m_source = nullptr;
    /// The position last delivered, from which the distance filter measures.
    std::optional<QGeoCoordinate> m_delivered;
};
