// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Notifications/NotificationSettings.h"
#include "Core/Notifications/FirstLaunchRequest.h"
#include "Support/Table.h"
#include "Support/World.h"

#include <QTest>

#include <optional>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(std::optional<bool>)

class NotificationSettingsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void savedValuesAreRead_data()
    {
        const Table<QString, QVariant, QString> row;
        row("first start", "unknown", true, "0 1 micro 0 100 0 10min");
        row("radius of none", "settings.locationRadiusKm", 0.0, "0 1 micro 0 100 0 10min");
        row("radius off the choices", "settings.locationRadiusKm", 37.5, "0 1 micro 0 37.5 0 10min");
        row("category in capitals", "settings.globalMagCategory", u"Strong"_s, "0 1 micro 0 100 0 10min");
        row("unknown interval", "settings.refreshInterval", u"90min"_s, "0 1 micro 0 100 0 10min");
        row("magnitude switched off", "settings.globalMagEnabled", false, "0 0 micro 0 100 0 10min");
        row("old threshold unset", "notificationMagnitudeThreshold", 0.0, "0 1 micro 0 100 0 10min");
    }

    void savedValuesAreRead()
    {
        const auto [key, saved, expected] = Table<QString, QVariant, QString>::current();
        World world;
        world.userDefaults.values.insert(key, saved);
        QCOMPARE(summary(NotificationSettings()), expected);
        QVERIFY(world.userDefaults.writes.isEmpty());
    }

    void oldThresholdWinsForOneRunOnly()
    {
        World world;
        const QString oldKey = u"notificationMagnitudeThreshold"_s;
        world.userDefaults.values.insert(oldKey, 4.5);
        world.userDefaults.values.insert(u"settings.globalMagCategory"_s, u"major"_s);
        QVERIFY(NotificationSettings().globalMagnitudeCategory() == MagnitudeCategory::moderate);
        QCOMPARE(world.userDefaults.writes, QStringList{oldKey});
        QVERIFY(NotificationSettings().globalMagnitudeCategory() == MagnitudeCategory::major);
    }

    void choicesSurviveARestart()
    {
        World world;
        NotificationSettings settings;
        settings.setIsEnabled(true);
        settings.setGlobalMagnitudeEnabled(false);
        settings.setGlobalMagnitudeCategory(MagnitudeCategory::low);
        settings.setLocationNotificationsEnabled(true);
        settings.setLocationRadiusKm(50.0);
        settings.setSwarmNotificationsEnabled(true);
        // An observer that assigns has the last word.
        connect(&settings, &NotificationSettings::refreshIntervalChanged, &settings, [&settings] {
            if (settings.refreshInterval() == RefreshInterval(RefreshInterval::oneHour))
                settings.setRefreshInterval(RefreshInterval::disabled);
        });
        settings.setRefreshInterval(RefreshInterval::oneHour);
        QCOMPARE(summary(settings), u"1 0 low 1 50 1 disabled"_s);
        QCOMPARE(summary(NotificationSettings()), u"1 0 low 1 50 1 disabled"_s);
    }

    void firstLaunchAsksOnceAndTheAnswerSwitchesAlerts_data()
    {
        const Table<std::optional<bool>, bool> row;
        row("granted", true, true);
        row("refused", false, false);
        row("no service", std::nullopt, false);
    }

    void firstLaunchAsksOnceAndTheAnswerSwitchesAlerts()
    {
        const auto [answer, expected] = Table<std::optional<bool>, bool>::current();
        World world;
        world.userNotificationCenter.answer = answer;
        NotificationSettings &settings = NotificationSettings::shared();
        settings.setIsEnabled(!expected);
        world.userDefaults.writes.clear();
        requestNotificationPermissionOnFirstLaunch();
        world.settle();
        QCOMPARE(settings.isEnabled(), expected);
        // A question that is cut short is not put again either.
        QCOMPARE(world.userDefaults.writes.constFirst(), u"settings.hasAskedNotifPermission"_s);
        settings.setIsEnabled(!expected);
        requestNotificationPermissionOnFirstLaunch();
        world.settle();
        QCOMPARE(world.userNotificationCenter.authorizationRequests, 1);
        QCOMPARE(settings.isEnabled(), !expected);
    }

private:
    static QString summary(const NotificationSettings &settings)
    {
        return u"%1 %2 %3 %4 %5 %6 %7"_s.arg(settings.isEnabled())
            .arg(settings.globalMagnitudeEnabled())
            .arg(settings.globalMagnitudeCategory().rawValue())
            .arg(settings.locationNotificationsEnabled())
            .arg(settings.locationRadiusKm())
            .arg(settings.swarmNotificationsEnabled())
            .arg(settings.refreshInterval().rawValue());
    }
};

QTEST_GUILESS_MAIN(NotificationSettingsTest)
#include "NotificationSettingsTest.moc"
