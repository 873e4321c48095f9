// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Notifications/FirstLaunchRequest.h"
#include "Core/Notifications/NotificationSettings.h"
#include "Support/Table.h"
#include "Support/World.h"

#include <QTest>

class FirstLaunchRequestTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answerSwitchesAlerts_data()
    {
        const Table<QVariant, bool, bool> row;
        row("granted", QVariant(true), false, true);
        row("refused", QVariant(false), true, false);
        row("no service", QVariant(), true, false);
    }

    void answerSwitchesAlerts()
    {
        const auto [answer, before, expected] = Table<QVariant, bool, bool>::current();
        World world;
        if (answer.isValid())
            world.userNotificationCenter.answer = answer.toBool();
        NotificationSettings::shared().setIsEnabled(before);
        requestNotificationPermissionOnFirstLaunch();
        world.settle();
        QCOMPARE(NotificationSettings::shared().isEnabled(), expected);
    }

    void questionIsPutOnceInALife()
    {
        World world;
        world.userNotificationCenter.answer = true;
        requestNotificationPermissionOnFirstLaunch();
        world.settle();
        NotificationSettings::shared().setIsEnabled(false);
        requestNotificationPermissionOnFirstLaunch();
        world.settle();
        QCOMPARE(world.userNotificationCenter.authorizationRequests, 1);
        QCOMPARE(NotificationSettings::shared().isEnabled(), false);
    }

    void keyIsWrittenBeforeTheQuestion()
    {
        World world;
        requestNotificationPermissionOnFirstLaunch();
        QCOMPARE(world.userDefaults.writes.value(0), QStringLiteral("settings.hasAskedNotifPermission"));
        QCOMPARE(world.userDefaults.values.value(QStringLiteral("settings.hasAskedNotifPermission")), true);
    }
};

QTEST_GUILESS_MAIN(FirstLaunchRequestTest)
#include "FirstLaunchRequestTest.moc"
