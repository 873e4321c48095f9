// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Notifications/NotificationSettings.h"
#include "Support/World.h"

#include <QSignalSpy>
#include <QTest>

class NotificationSettingsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void firstStartHasDefaultsAndWritesNothing()
    {
        World world;
        const NotificationSettings settings;
        QCOMPARE(settings.isEnabled(), false);
        QCOMPARE(settings.globalMagnitudeEnabled(), true);
        QVERIFY(settings.globalMagnitudeCategory() == MagnitudeCategory::micro);
        QCOMPARE(settings.locationNotificationsEnabled(), false);
        QCOMPARE(settings.locationRadiusKm(), 100.0);
        QCOMPARE(settings.swarmNotificationsEnabled(), false);
        QVERIFY(settings.refreshInterval() == RefreshInterval::tenMinutes);
        QVERIFY(world.userDefaults.writes.isEmpty());
    }

    void savedValuesAreRead_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("saved");
        QTest::addColumn<QString>("reads");
        const auto row = [](const char *name, const char *key, const QVariant &saved, const char *reads) {
            QTest::newRow(name) << QString::fromLatin1(key) << saved << QString::fromLatin1(reads);
        };
        row("radius of none", "settings.locationRadiusKm", 0.0, "0 1 micro 0 100 0 10min");
        row("radius off the choices", "settings.locationRadiusKm", 37.5, "0 1 micro 0 37.5 0 10min");
        row("magnitude switched off", "settings.globalMagEnabled", false, "0 0 micro 0 100 0 10min");
        row("category", "settings.globalMagCategory", QStringLiteral("strong"), "0 1 strong 0 100 0 10min");
        row("category in capitals", "settings.globalMagCategory", QStringLiteral("Strong"), "0 1 micro 0 100 0 10min");
        row("switched on", "notificationsEnabled", true, "1 1 micro 0 100 0 10min");
        row("proximity", "settings.locationEnabled", true, "0 1 micro 1 100 0 10min");
        row("swarm", "settings.swarmEnabled", true, "0 1 micro 0 100 1 10min");
        row("manual", "settings.refreshInterval", QStringLiteral("disabled"), "0 1 micro 0 100 0 disabled");
        row("one hour", "settings.refreshInterval", QStringLiteral("60min"), "0 1 micro 0 100 0 60min");
        row("unknown interval", "settings.refreshInterval", QStringLiteral("90min"), "0 1 micro 0 100 0 10min");
        row("old threshold unset", "notificationMagnitudeThreshold", 0.0, "0 1 micro 0 100 0 10min");
    }

    void savedValuesAreRead()
    {
        QFETCH(QString, key);
        QFETCH(QVariant, saved);
        World world;
        world.userDefaults.values.insert(key, saved);
        QTEST(summary(NotificationSettings()), "reads");
        QVERIFY(world.userDefaults.writes.isEmpty());
    }

    void oldThresholdWinsForOneRunOnly()
    {
        World world;
        const QString oldKey = QStringLiteral("notificationMagnitudeThreshold");
        world.userDefaults.values.insert(oldKey, 4.5);
        world.userDefaults.values.insert(QStringLiteral("settings.globalMagCategory"), QStringLiteral("major"));
        QVERIFY(NotificationSettings().globalMagnitudeCategory() == MagnitudeCategory::moderate);
        QCOMPARE(world.userDefaults.writes, QStringList{oldKey});
        QVERIFY(!world.userDefaults.values.contains(oldKey));
        QVERIFY(NotificationSettings().globalMagnitudeCategory() == MagnitudeCategory::major);
    }

    void eachAssignmentTellsAndSavesEvenAnEqualOne()
    {
        World world;
        NotificationSettings settings;
        QSignalSpy told(&settings, &NotificationSettings::refreshIntervalChanged);
        settings.setRefreshInterval(RefreshInterval::oneHour);
        settings.setRefreshInterval(RefreshInterval::oneHour);
        QCOMPARE(told.count(), 2);
        QCOMPARE(world.userDefaults.writes.count(QStringLiteral("settings.refreshInterval")), 2);
    }

    void anObserverThatAssignsAnewHasTheLastWord()
    {
        World world;
        NotificationSettings settings;
        using Settings = NotificationSettings;
        // Each observer answers the first assignment by one of its own.
        const auto answer = [&](void (Settings::*changed)(), auto get, auto set, auto value) {
            connect(&settings, changed, &settings, [=, &settings] {
                if ((settings.*get)() != value)
                    (settings.*set)(value);
            });
        };
        answer(&Settings::isEnabledChanged, &Settings::isEnabled, &Settings::setIsEnabled, false);
        answer(&Settings::globalMagnitudeEnabledChanged, &Settings::globalMagnitudeEnabled,
               &Settings::setGlobalMagnitudeEnabled, false);
        answer(&Settings::globalMagnitudeCategoryChanged, &Settings::globalMagnitudeCategory,
               &Settings::setGlobalMagnitudeCategory, MagnitudeCategory(MagnitudeCategory::low));
        answer(&Settings::locationNotificationsEnabledChanged, &Settings::locationNotificationsEnabled,
               &Settings::setLocationNotificationsEnabled, false);
        answer(&Settings::locationRadiusKmChanged, &Settings::locationRadiusKm, &Settings::setLocationRadiusKm, 50.0);
        answer(&Settings::swarmNotificationsEnabledChanged, &Settings::swarmNotificationsEnabled,
               &Settings::setSwarmNotificationsEnabled, false);
        answer(&Settings::refreshIntervalChanged, &Settings::refreshInterval, &Settings::setRefreshInterval,
               RefreshInterval(RefreshInterval::disabled));
        settings.setIsEnabled(true);
        settings.setGlobalMagnitudeEnabled(true);
        settings.setGlobalMagnitudeCategory(MagnitudeCategory::strong);
        settings.setLocationNotificationsEnabled(true);
        settings.setLocationRadiusKm(500.0);
        settings.setSwarmNotificationsEnabled(true);
        settings.setRefreshInterval(RefreshInterval::oneHour);
        QCOMPARE(summary(settings), QStringLiteral("0 0 low 0 50 0 disabled"));
        QCOMPARE(summary(NotificationSettings()), QStringLiteral("0 0 low 0 50 0 disabled"));
    }

    void choicesSurviveARestart()
    {
        World world;
        {
            NotificationSettings settings;
            settings.setIsEnabled(true);
            settings.setGlobalMagnitudeEnabled(false);
            settings.setGlobalMagnitudeCategory(MagnitudeCategory::strong);
            settings.setLocationNotificationsEnabled(true);
            settings.setLocationRadiusKm(500.0);
            settings.setSwarmNotificationsEnabled(true);
            settings.setRefreshInterval(RefreshInterval::fiveMinutes);
        }
        QCOMPARE(summary(NotificationSettings()), QStringLiteral("1 0 strong 1 500 1 5min"));
    }

private:
    static QString summary(const NotificationSettings &settings)
    {
        return QStringLiteral("%1 %2 %3 %4 %5 %6 %7")
            .arg(settings.isEnabled())
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
