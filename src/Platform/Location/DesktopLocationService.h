// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Location/LocationService.h"
#include "Platform/Permissions/Permissions.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>

/// The desktop's position service (GeoClue), under the program's own permission and asynchronously throughout: a
/// service that is missing, hangs or dies costs positions and never time. It is touched at the first start of updates
/// and not before. Where there is none, the remembered answer stands and no position comes. A service that refuses
/// access makes the status `denied` until the program ends.
class DesktopLocationService : public LocationService
{
    Q_OBJECT

public:
    /// Looks for the service on `systemBus`, connected or not. `desktopId` is the name of the program's desktop file,
    /// without its suffix: the service decides by it.
    DesktopLocationService(Permissions &permissions, const QDBusConnection &systemBus, const QString &desktopId,
                           QObject *parent = nullptr);

    LocationAuthorizationStatus authorizationStatus() const override;
    /// Counts from the next start of updates on. The service measures, from the position that it told last.
    void setDistanceFilter(double meters) override { m_distanceFilterMeters = meters; }
    void requestAlwaysAuthorization() override;
    void startUpdatingLocation() override;

private Q_SLOTS:
    /// The service's word that the position has changed.
    void locationUpdated(const QDBusObjectPath &from, const QDBusObjectPath &to);

private:
    void answerChanged(Permissions::Subject subject);
    bool isAuthorized() const { return authorizationStatus() == LocationAuthorizationStatus::authorizedAlways; }
    QDBusMessage toClient(const QString &interface, const QString &method, const QVariantList &arguments = {}) const;
    void set(const QString &property, const QVariant &value);
    void begin(const QString &service, const QString &client);
    void end();
    void takePosition(const QVariantMap &location);

    Permissions &m_permissions;
    QDBusConnection m_systemBus;
    QString m_desktopId;
    double m_distanceFilterMeters = 0;
    bool m_isLooking = false;
    bool m_isRefused = false;
    /// The bus's name for the present service, so that no other gets what is meant for it.
    QString m_service;
    /// The object that the service keeps for this program. Empty while no updates are wanted, when the service
    /// did not begin them, or is gone.
    QString m_client;
};
