// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/MagnitudeCategory.h"
#include "Core/Notifications/RefreshInterval.h"
#include "Platform/Support/Published.h"

#include <QObject>

/// The user's choices about alerts and automatic refresh: read once from the saved defaults, written back at every
/// assignment, equal or not. A saved text that means nothing counts as unset and stays until the next assignment.
class NotificationSettings : public QObject
{
    Q_OBJECT

public:
    /// The instance that every part of the program uses.
    static NotificationSettings &shared();

    /// Reads UserDefaults::standard(); writes nothing but the removal of an old threshold that it has taken over.
    explicit NotificationSettings(QObject *parent = nullptr);

    /// The master switch of all alerts.
    bool isEnabled() const { return m_isEnabled; }
    bool globalMagnitudeEnabled() const { return m_globalMagnitudeEnabled; }
    /// The weakest category that raises an alert by magnitude.
    MagnitudeCategory globalMagnitudeCategory() const { return m_globalMagnitudeCategory; }
    bool locationNotificationsEnabled() const { return m_locationNotificationsEnabled; }
    /// Any saved value but 0 is kept, also one that the screen does not offer.
    double locationRadiusKm() const { return m_locationRadiusKm; }
    bool swarmNotificationsEnabled() const { return m_swarmNotificationsEnabled; }
    RefreshInterval refreshInterval() const { return m_refreshInterval; }

    void setIsEnabled(bool value);
    void setGlobalMagnitudeEnabled(bool value);
    void setGlobalMagnitudeCategory(MagnitudeCategory value);
    void setLocationNotificationsEnabled(bool value);
    void setLocationRadiusKm(double value);
    void setSwarmNotificationsEnabled(bool value);
    void setRefreshInterval(RefreshInterval value);

Q_SIGNALS:
    void isEnabledChanged();
    void globalMagnitudeEnabledChanged();
    void globalMagnitudeCategoryChanged();
    void locationNotificationsEnabledChanged();
    void locationRadiusKmChanged();
    void swarmNotificationsEnabledChanged();
    void refreshIntervalChanged();

private:
    Published<bool> m_isEnabled;
    Published<bool> m_globalMagnitudeEnabled;
    Published<MagnitudeCategory> m_globalMagnitudeCategory;
    Published<bool> m_locationNotificationsEnabled;
    Published<double> m_locationRadiusKm;
    Published<bool> m_swarmNotificationsEnabled;
    Published<RefreshInterval> m_refreshInterval;
};
