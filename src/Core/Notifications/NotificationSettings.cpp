// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Notifications/NotificationSettings.h"

#include "Platform/Support/Platform.h"
#include "Platform/UserDefaults/UserDefaults.h"

namespace {
const QString enabledKey = QStringLiteral("notificationsEnabled");
const QString globalMagEnabledKey = QStringLiteral("settings.globalMagEnabled");
const QString globalMagCategoryKey = QStringLiteral("settings.globalMagCategory");
const QString locationEnabledKey = QStringLiteral("settings.locationEnabled");
const QString locationRadiusKey = QStringLiteral("settings.locationRadiusKm");
const QString swarmEnabledKey = QStringLiteral("settings.swarmEnabled");
const QString refreshIntervalKey = QStringLiteral("settings.refreshInterval");
/// A threshold in magnitudes, as early versions saved it.
const QString oldThresholdKey = QStringLiteral("notificationMagnitudeThreshold");

constexpr double defaultRadiusKm = 100.0;

MagnitudeCategory loadMagnitudeCategory(UserDefaults &defaults)
{
    const double oldThreshold = defaults.doubleValue(oldThresholdKey);
    if (oldThreshold != 0.0) {
        // Good for this run only: nothing is saved until the user touches the picker.
        defaults.removeObject(oldThresholdKey);
        return MagnitudeCategory::from(oldThreshold);
    }
    return MagnitudeCategory::fromRawValue(defaults.stringValue(globalMagCategoryKey).value_or(QString()))
        .value_or(MagnitudeCategory::micro);
}

double loadRadiusKm(const UserDefaults &defaults)
{
    const double radiusKm = defaults.doubleValue(locationRadiusKey);
    return radiusKm == 0.0 ? defaultRadiusKm : radiusKm;
}

RefreshInterval loadRefreshInterval(const UserDefaults &defaults)
{
    return RefreshInterval::fromRawValue(defaults.stringValue(refreshIntervalKey).value_or(QString()))
        .value_or(RefreshInterval::tenMinutes);
}
}

NotificationSettings &NotificationSettings::shared()
{
    return Platform::shared<NotificationSettings>([] { return new NotificationSettings; });
}

NotificationSettings::NotificationSettings(QObject *parent)
    : QObject(parent)
    , m_isEnabled(this, &NotificationSettings::isEnabledChanged, UserDefaults::standard().boolValue(enabledKey))
    , m_globalMagnitudeEnabled(this, &NotificationSettings::globalMagnitudeEnabledChanged,
                               !UserDefaults::standard().object(globalMagEnabledKey).isValid()
                                   || UserDefaults::standard().boolValue(globalMagEnabledKey))
    , m_globalMagnitudeCategory(this, &NotificationSettings::globalMagnitudeCategoryChanged,
                                loadMagnitudeCategory(UserDefaults::standard()))
    , m_locationNotificationsEnabled(this, &NotificationSettings::locationNotificationsEnabledChanged,
                                     UserDefaults::standard().boolValue(locationEnabledKey))
    , m_locationRadiusKm(this, &NotificationSettings::locationRadiusKmChanged, loadRadiusKm(UserDefaults::standard()))
    , m_swarmNotificationsEnabled(this, &NotificationSettings::swarmNotificationsEnabledChanged,
                                  UserDefaults::standard().boolValue(swarmEnabledKey))
    , m_refreshInterval(this, &NotificationSettings::refreshIntervalChanged,
                        loadRefreshInterval(UserDefaults::standard()))
{
}

// An observer may have assigned anew by the time that an assignment is saved, so each saves the value that stands.

void NotificationSettings::setIsEnabled(bool value)
{
    m_isEnabled = value;
    UserDefaults::standard().setBool(enabledKey, m_isEnabled.value());
}

void NotificationSettings::setGlobalMagnitudeEnabled(bool value)
{
    m_globalMagnitudeEnabled = value;
    UserDefaults::standard().setBool(globalMagEnabledKey, m_globalMagnitudeEnabled.value());
}

void NotificationSettings::setGlobalMagnitudeCategory(MagnitudeCategory value)
{
    m_globalMagnitudeCategory = value;
    UserDefaults::standard().setString(globalMagCategoryKey, m_globalMagnitudeCategory->rawValue());
}

void NotificationSettings::setLocationNotificationsEnabled(bool value)
{
    m_locationNotificationsEnabled = value;
    UserDefaults::standard().setBool(locationEnabledKey, m_locationNotificationsEnabled.value());
}

void NotificationSettings::setLocationRadiusKm(double value)
{
    m_locationRadiusKm = value;
    UserDefaults::standard().setDouble(locationRadiusKey, m_locationRadiusKm.value());
}

void NotificationSettings::setSwarmNotificationsEnabled(bool value)
{
    m_swarmNotificationsEnabled = value;
    UserDefaults::standard().setBool(swarmEnabledKey, m_swarmNotificationsEnabled.value());
}

void NotificationSettings::setRefreshInterval(RefreshInterval value)
{
    m_refreshInterval = value;
    UserDefaults::standard().setString(refreshIntervalKey, m_refreshInterval->rawValue());
}
