// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Ajustes/SettingsScreen.h"

#include "Core/Notifications/NotificationManager.h"
#include "Platform/Support/Async.h"
#include "Platform/Support/Platform.h"
#include "Platform/Text/Localization.h"
#include "Platform/Text/NumberFormat.h"
#include "Platform/Workspace/Workspace.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace {
constexpr std::array<double, 4> radiiKm = {50.0, 100.0, 200.0, 500.0};

template<class Range, class Value>
int rowOf(const Range &choices, const Value &value)
{
    const auto found = std::ranges::find(choices, value);
    return found == std::ranges::end(choices) ? -1 : int(std::ranges::distance(std::ranges::begin(choices), found));
}

QList<PickerChoice> categoryChoices()
{
    QList<PickerChoice> choices;
    for (const MagnitudeCategory category : MagnitudeCategory::allCases)
        choices.append({category.label() + QStringLiteral(" (") + category.range() + u')', category.color()});
    return choices;
}

QList<PickerChoice> radiusChoices()
{
    QList<PickerChoice> choices;
    for (const double radiusKm : radiiKm)
        choices.append({kilometersText(radiusKm)});
    return choices;
}

QList<PickerChoice> intervalChoices()
{
    QList<PickerChoice> choices;
    for (const RefreshInterval interval : RefreshInterval::allCases)
        choices.append({interval.displayName()});
    return choices;
}
}

SettingsScreen::SettingsScreen(QObject *parent)
    : QObject(parent)
    , m_settings(NotificationSettings::shared())
    , m_locationManager(LocationManager::shared())
    , m_wasEnabled(m_settings.isEnabled())
    , m_categories(categoryChoices(), nullptr)
    , m_radii(radiusChoices(), nullptr)
    , m_intervals(intervalChoices(), nullptr)
{
    const auto watch = [this](auto &observed, auto... signal) {
        (connect(&observed, signal, this, &SettingsScreen::changed), ...);
    };
    watch(m_settings, &NotificationSettings::isEnabledChanged, &NotificationSettings::globalMagnitudeEnabledChanged,
          &NotificationSettings::globalMagnitudeCategoryChanged,
          &NotificationSettings::locationNotificationsEnabledChanged, &NotificationSettings::locationRadiusKmChanged,
          &NotificationSettings::swarmNotificationsEnabledChanged, &NotificationSettings::refreshIntervalChanged);
    watch(m_locationManager, &LocationManager::authorizationStatusChanged);
    connect(&m_settings, &NotificationSettings::isEnabledChanged, this, &SettingsScreen::enabledDidChange);
    QMetaObject::invokeMethod(this, &SettingsScreen::refreshSystemAuthStatus, Qt::QueuedConnection);
}

bool SettingsScreen::showsNotificationWarning() const
{
    return m_settings.isEnabled() && m_systemAuthStatus == NotificationAuthorizationStatus::denied;
}

bool SettingsScreen::showsLocationWarning() const
{
    const LocationAuthorizationStatus status = m_locationManager.authorizationStatus();
    return m_settings.locationNotificationsEnabled()
        && (status == LocationAuthorizationStatus::denied || status == LocationAuthorizationStatus::restricted);
}

int SettingsScreen::categoryRow() const
{
    return rowOf(MagnitudeCategory::allCases, m_settings.globalMagnitudeCategory());
}

QString SettingsScreen::magnitudeFooter() const
{
    if (!m_settings.globalMagnitudeEnabled())
        return {};
    const QString format =
        localized("settings.magnitudeThreshold.footer",
                  QStringLiteral("You will receive a notification for earthquakes of magnitude %@ or higher."));
    return formatted(format, {m_settings.globalMagnitudeCategory().range()});
}

int SettingsScreen::radiusRow() const
{
    return rowOf(radiiKm, m_settings.locationRadiusKm());
}

QStringList SettingsScreen::swarmRuleDescriptions() const
{
    return {localized("settings.swarm.rule1", QStringLiteral("10 earthquakes in 10 minutes")),
            localized("settings.swarm.rule2", QStringLiteral("30 earthquakes in 1 hour")),
            localized("settings.swarm.rule3", QStringLiteral("100 earthquakes in 2 hours")),
            localized("settings.swarm.rule4", QStringLiteral("1,000 earthquakes in 24 hours"))};
}

int SettingsScreen::intervalRow() const
{
    return rowOf(RefreshInterval::allCases, m_settings.refreshInterval());
}

QString SettingsScreen::intervalFooter() const
{
    if (m_settings.refreshInterval() == RefreshInterval::disabled)
        return localized("Las actualizaciones se realizarán únicamente de forma manual.",
                         QStringLiteral("Las actualizaciones se realizarán únicamente de forma manual."));
    return localized("El sistema puede ajustar la frecuencia real para optimizar la batería.",
                     QStringLiteral("El sistema puede ajustar la frecuencia real para optimizar la batería."));
}

void SettingsScreen::setByProximity(bool value)
{
    if (!value) {
        // Updates of the position go on.
        m_settings.setLocationNotificationsEnabled(false);
        return;
    }
    switch (m_locationManager.authorizationStatus()) {
    case LocationAuthorizationStatus::notDetermined:
        m_locationManager.requestPermission();
        break;
    case LocationAuthorizationStatus::denied:
    case LocationAuthorizationStatus::restricted:
        return;
    case LocationAuthorizationStatus::authorizedAlways:
    case LocationAuthorizationStatus::authorizedWhenInUse:
        m_locationManager.startUpdatingIfAuthorized();
        break;
    }
    m_settings.setLocationNotificationsEnabled(true);
}

void SettingsScreen::setCategoryRow(int row)
{
    m_settings.setGlobalMagnitudeCategory(MagnitudeCategory::allCases.at(size_t(row)));
}

void SettingsScreen::setRadiusRow(int row)
{
    m_settings.setLocationRadiusKm(radiiKm.at(size_t(row)));
}

void SettingsScreen::setIntervalRow(int row)
{
    m_settings.setRefreshInterval(RefreshInterval::allCases.at(size_t(row)));
}

void SettingsScreen::openSystemSettings() const
{
    // A failure is not told: that no window comes says as much.
    Platform::current().workspace.open(Workspace::permissionsUrl());
}

void SettingsScreen::refreshSystemAuthStatus()
{
    whenFinished(Platform::current().userNotificationCenter.authorizationStatus(), this,
                 [this](const QFuture<NotificationAuthorizationStatus> &status) {
                     try {
                         m_systemAuthStatus = status.result();
                     } catch (const std::exception &) {
                         return; // no answer: what was known stands
                     }
                     Q_EMIT changed();
                 });
}

void SettingsScreen::enabledDidChange()
{
    const bool isEnabled = m_settings.isEnabled();
    if (isEnabled == m_wasEnabled)
        return;
    m_wasEnabled = isEnabled;
    QMetaObject::invokeMethod(this, &SettingsScreen::refreshSystemAuthStatus, Qt::QueuedConnection);
    if (isEnabled)
        QMetaObject::invokeMethod(this, &SettingsScreen::requestAuthorization, Qt::QueuedConnection);
}

void SettingsScreen::requestAuthorization()
{
    // The question may outlive the screen: the answer counts all the same.
    whenFinished(NotificationManager::shared().requestAuthorization(), &m_settings,
                 [self = QPointer(this), &settings = m_settings](const QFuture<bool> &granted) {
                     if (!granted.result())
                         settings.setIsEnabled(false);
                     if (self)
                         self->refreshSystemAuthStatus();
                 });
}
