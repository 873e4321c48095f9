// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Notifications/FirstLaunchRequest.h"
#include "Core/Notifications/NotificationSettings.h"
#include "Support/World.h"

#include <QTest>

class FirstLaunchRequestTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answerSwitchesAlerts_data()
    {
        QTest::addColumn<QVariant>("answer");
        QTest::addColumn<bool>("before");
        QTest::addColumn<bool>("after");
        QTest::newRow("granted") << QVariant(true) << false << true;
        QTest::newRow("refused") << QVariant(false) << true << false;
        QTest::newRow("no service") << QVariant() << true << false;
    }

    void answerSwitchesAlerts()
    {
        QFETCH(QVariant, answer);
        QFETCH(bool, before);
        World world;
        if (answer.isValid())
            world.userNotificationCenter.answer = answer.toBool();
        NotificationSettings::shared().setIsEnabled(before);
        requestNotificationPermissionOnFirstLaunch();
        world.settle();
        QTEST(NotificationSettings::shared().isEnabled(), "after");
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
