// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Location/LocationManager.h"
#include "Core/Notifications/NotificationSettings.h"
#include "Platform/UserNotifications/UserNotificationCenter.h"
#include "iOS/Shared/PickerModel.h"

#include <QObject>
#include <QStringList>
#include <QtQmlIntegration>

/// The settings screen behind its QML: what its rows show, and what their controls ask for. It holds no choice of its
/// own; everything is in the shared settings. Made by the QML with its screen, and dies with it.
class SettingsScreen : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool isEnabled READ isEnabled WRITE setIsEnabled NOTIFY changed)
    Q_PROPERTY(bool byMagnitude READ byMagnitude WRITE setByMagnitude NOTIFY changed)
    Q_PROPERTY(bool byProximity READ byProximity WRITE setByProximity NOTIFY changed)
    Q_PROPERTY(bool swarmDetection READ swarmDetection WRITE setSwarmDetection NOTIFY changed)
    Q_PROPERTY(bool showsNotificationWarning READ showsNotificationWarning NOTIFY changed)
    Q_PROPERTY(bool showsLocationWarning READ showsLocationWarning NOTIFY changed)
    Q_PROPERTY(PickerModel *categories READ categories CONSTANT)
    Q_PROPERTY(int categoryRow READ categoryRow WRITE setCategoryRow NOTIFY changed)
    Q_PROPERTY(QString magnitudeFooter READ magnitudeFooter NOTIFY changed)
    Q_PROPERTY(PickerModel *radii READ radii CONSTANT)
    Q_PROPERTY(int radiusRow READ radiusRow WRITE setRadiusRow NOTIFY changed)
    Q_PROPERTY(QStringList swarmRuleDescriptions READ swarmRuleDescriptions CONSTANT)
    Q_PROPERTY(PickerModel *intervals READ intervals CONSTANT)
    Q_PROPERTY(int intervalRow READ intervalRow WRITE setIntervalRow NOTIFY changed)
    Q_PROPERTY(QString intervalFooter READ intervalFooter NOTIFY changed)
    /// Kept for an information sheet of this screen; nothing shows one yet.
    Q_PROPERTY(bool showInfo MEMBER m_showInfo NOTIFY showInfoChanged)

public:
    explicit SettingsScreen(QObject *parent = nullptr);

    bool isEnabled() const { return m_settings.isEnabled(); }
    bool byMagnitude() const { return m_settings.globalMagnitudeEnabled(); }
    bool byProximity() const { return m_settings.locationNotificationsEnabled(); }
    bool swarmDetection() const { return m_settings.swarmNotificationsEnabled(); }
    /// The user wants alerts and has refused notifications, by the last word of the desktop.
    bool showsNotificationWarning() const;
    /// The user wants alerts by proximity and has since refused the position.
    bool showsLocationWarning() const;
    PickerModel *categories() { return &m_categories; }
    int categoryRow() const;
    /// Empty while alerts by magnitude are off.
    QString magnitudeFooter() const;
    PickerModel *radii() { return &m_radii; }
    /// -1 for a saved radius that is none of the choices.
    int radiusRow() const;
    QStringList swarmRuleDescriptions() const;
    PickerModel *intervals() { return &m_intervals; }
    int intervalRow() const;
    QString intervalFooter() const;

    /// Switching alerts on asks for the permission and goes back to off when it is refused.
    void setIsEnabled(bool value) { m_settings.setIsEnabled(value); }
    void setByMagnitude(bool value) { m_settings.setGlobalMagnitudeEnabled(value); }
    /// Switching on asks for the position where that is open, and does nothing where it is refused.
    void setByProximity(bool value);
    void setSwarmDetection(bool value) { m_settings.setSwarmNotificationsEnabled(value); }
    void setCategoryRow(int row);
    void setRadiusRow(int row);
    void setIntervalRow(int row);

    /// Shows where the permissions can be changed.
    Q_INVOKABLE void openSystemSettings() const;

Q_SIGNALS:
    /// Something of the above may have changed.
    void changed();
    void showInfoChanged();

private:
    void refreshSystemAuthStatus();
    void enabledDidChange();
    void requestAuthorization();

    NotificationSettings &m_settings;
    LocationManager &m_locationManager;
    NotificationAuthorizationStatus m_systemAuthStatus = NotificationAuthorizationStatus::notDetermined;
    /// The master switch when it was last looked at.
    bool m_wasEnabled;
    bool m_showInfo = false;
    PickerModel m_categories;
    PickerModel m_radii;
    PickerModel m_intervals;
};
