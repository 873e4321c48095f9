// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Location/DesktopLocationService.h"

#include "Platform/Support/DBusCall.h"

#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

#include <cmath>
#include <limits>

namespace {
const QString geoClue = QStringLiteral("org.freedesktop.GeoClue2");
const QString managerPath = QStringLiteral("/org/freedesktop/GeoClue2/Manager");
const QString managerInterface = QStringLiteral("org.freedesktop.GeoClue2.Manager");
const QString clientInterface = QStringLiteral("org.freedesktop.GeoClue2.Client");
const QString locationInterface = QStringLiteral("org.freedesktop.GeoClue2.Location");
const QString locationUpdatedSignal = QStringLiteral("LocationUpdated");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

/// A value of the protocol: better than a neighbourhood, and without satellites.
constexpr uint streetLevel = 6;

/// Not a number where there is none of this name.
double number(const QVariantMap &properties, const QString &name)
{
    bool isNumber = false;
    const double value = properties.value(name).toDouble(&isNumber);
    return isNumber ? value : std::numeric_limits<double>::quiet_NaN();
}
}

DesktopLocationService::DesktopLocationService(Permissions &permissions, const QDBusConnection &systemBus,
                                               const QString &desktopId, QObject *parent)
    : LocationService(parent)
    , m_permissions(permissions)
    , m_systemBus(systemBus)
    , m_desktopId(desktopId)
{
    connect(&permissions, &Permissions::answerChanged, this, &DesktopLocationService::answerChanged,
            Qt::QueuedConnection);
    auto *watcher = new QDBusServiceWatcher(geoClue, m_systemBus, QDBusServiceWatcher::WatchForUnregistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] { m_client.clear(); });
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
    if (!isAuthorized())
        end();
    Q_EMIT authorizationChanged();
}

void DesktopLocationService::startUpdatingLocation()
{
    if (m_isLooking || !m_client.isEmpty())
        return;
    m_isLooking = true;
    const QDBusMessage getClient =
        QDBusMessage::createMethodCall(geoClue, managerPath, managerInterface, QStringLiteral("GetClient"));
    callAsync(m_systemBus, getClient, this, [this](const auto &answer) {
        m_isLooking = false;
        const QDBusPendingReply<QDBusObjectPath> client = answer;
        if (client.isValid() && isAuthorized())
            begin(client.reply().service(), client.value().path());
    });
}

QDBusMessage DesktopLocationService::toClient(const QString &interface, const QString &method,
                                              const QVariantList &arguments) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(m_service, m_client, interface, method);
    message.setArguments(arguments);
    return message;
}

void DesktopLocationService::set(const QString &property, const QVariant &value)
{
    const QVariant carried = QVariant::fromValue(QDBusVariant(value));
    m_systemBus.send(toClient(propertiesInterface, QStringLiteral("Set"), {clientInterface, property, carried}));
}

void DesktopLocationService::begin(const QString &service, const QString &client)
{
    m_service = service;
    m_client = client;
    set(QStringLiteral("DesktopId"), m_desktopId);
    set(QStringLiteral("RequestedAccuracyLevel"), streetLevel);
    set(QStringLiteral("DistanceThreshold"), uint(m_distanceFilterMeters));
    m_systemBus.connect(m_service, m_client, clientInterface, locationUpdatedSignal, this,
                        SLOT(locationUpdated(QDBusObjectPath, QDBusObjectPath)));
    callAsync(m_systemBus, toClient(clientInterface, QStringLiteral("Start")), this, [this](const auto &answer) {
        // One that does not answer may still be asking the user.
        if (answer.isError() && answer.error().type() != QDBusError::NoReply)
            m_client.clear();
        if (answer.error().type() != QDBusError::AccessDenied)
            return;
        m_isRefused = true;
        Q_EMIT authorizationChanged();
    });
}

void DesktopLocationService::end()
{
    if (m_client.isEmpty())
        return;
    m_systemBus.disconnect(m_service, m_client, clientInterface, locationUpdatedSignal, this,
                           SLOT(locationUpdated(QDBusObjectPath, QDBusObjectPath)));
    m_systemBus.send(toClient(clientInterface, QStringLiteral("Stop")));
    m_client.clear();
}

void DesktopLocationService::locationUpdated(const QDBusObjectPath &, const QDBusObjectPath &to)
{
    QDBusMessage getAll =
        QDBusMessage::createMethodCall(m_service, to.path(), propertiesInterface, QStringLiteral("GetAll"));
    getAll << locationInterface;
    callAsync(m_systemBus, getAll, this, [this](const auto &answer) {
        const QDBusPendingReply<QVariantMap> location = answer;
        if (location.isValid() && isAuthorized())
            takePosition(location.value());
    });
}

void DesktopLocationService::takePosition(const QVariantMap &location)
{
    const double latitude = number(location, QStringLiteral("Latitude"));
    const double longitude = number(location, QStringLiteral("Longitude"));
    if (std::abs(latitude) <= 90 && std::abs(longitude) <= 180)
        Q_EMIT locationsUpdated({Coordinate{latitude, longitude}});
}
