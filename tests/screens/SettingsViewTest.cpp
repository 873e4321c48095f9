// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Location/LocationManager.h"
#include "Core/Notifications/NotificationSettings.h"
#include "Support/ShownItems.h"
#include "Support/ShownWindow.h"
#include "Support/Table.h"
#include "iOS/Ajustes/SettingsScreen.h"

#include <QTest>

using namespace Qt::StringLiterals;

using Notifications = NotificationAuthorizationStatus;
using Location = LocationAuthorizationStatus;

namespace {
/// The settings window; the question of the first start lies in the past.
struct Scene : ShownWindow
{
    Scene()
    {
        world.userDefaults.values.insert(u"settings.hasAskedNotifPermission"_s, true);
        // Rows are at their places at once.
        world.appearance.setReducedMotion(true);
    }

    void switchAllOn()
    {
        settings.setIsEnabled(true);
        settings.setLocationNotificationsEnabled(true);
        settings.setSwarmNotificationsEnabled(true);
    }

    bool openSettings()
    {
        if (!show())
            return false;
        press(Qt::Key_Comma, Qt::ControlModifier);
        return enter("Ajustes");
    }

    /// The switch, button or picker of this name, rather than the label beside it; null when there is none.
    QQuickItem *control(QAnyStringView name) const
    {
        QList<QQuickItem *> controls = itemsOf("PressableItem");
        controls.removeIf([&](QQuickItem *item) { return ShownItems::spokenName(item) != name; });
        return controls.value(0);
    }

    void use(const char *name) { click(control(name)); }

    bool isOn(const char *name) const { return control(name)->property("on").toBool(); }

    /// The chosen radius, or nothing.
    QString radius() const
    {
        QStringList names{u"50 km"_s, u"100 km"_s, u"200 km"_s, u"500 km"_s};
        names.removeIf([this](const QString &name) { return !control(name)->property("chosen").toBool(); });
        return names.join(u',');
    }

    NotificationSettings &settings = NotificationSettings::shared();
};
}

class SettingsViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowsFollowTheSettings()
    {
        Scene scene;
        scene.settings.setGlobalMagnitudeCategory(MagnitudeCategory::moderate);
        QVERIFY(scene.openSettings());
        QVERIFY(scene.shows("Notifications") && scene.shows("Actualización automática"));
        QVERIFY(!scene.shows("By magnitude") && !scene.shows("By proximity") && !scene.shows("Swarm detection"));

        // From elsewhere: the screen follows all the same.
        scene.world.userNotificationCenter.answer = true;
        scene.settings.setIsEnabled(true);
        scene.settle();
        QVERIFY(scene.shows("By proximity") && scene.shows("Swarm detection") && scene.shows("Minimum threshold"));
        QVERIFY(scene.shows("You will receive a notification for earthquakes of magnitude 4.0 – 5.9 or higher."));
        QVERIFY(!scene.shows("Alert radius") && !scene.shows("Activates if detected:"));

        scene.use("By magnitude");
        QVERIFY(!scene.settings.globalMagnitudeEnabled() && !scene.isOn("By magnitude"));
        scene.use("Swarm detection");
        QVERIFY(scene.settings.swarmNotificationsEnabled() && scene.isOn("Swarm detection"));
        scene.settings.setLocationNotificationsEnabled(true);
        scene.settle();
        QVERIFY(scene.shows("Alert radius") && scene.shows("1,000 earthquakes in 24 hours"));
        QVERIFY(!scene.shows("Minimum threshold"));
        QVERIFY(!scene.shows("You will receive a notification for earthquakes of magnitude 4.0 – 5.9 or higher."));
        QCOMPARE(faultsOfItems(scene.window()), QStringList());
        QCOMPARE(scene.window().findChild<SettingsScreen *>()->property("showInfo"), QVariant(false));
    }

    void notificationWarning()
    {
        Scene scene;
        scene.settings.setIsEnabled(true);
        QVERIFY(scene.openSettings());
        QVERIFY2(!scene.shows("Notifications disabled in iOS"), "not determined yet");
        scene.world.userNotificationCenter.status = Notifications::denied;
        scene.settings.setSwarmNotificationsEnabled(!scene.settings.swarmNotificationsEnabled());
        scene.settle();
        QVERIFY2(!scene.shows("Notifications disabled in iOS"), "read at another setting's change");
        scene.window().close();
        QVERIFY(scene.enter("Terremotos"));
        scene.press(Qt::Key_Comma, Qt::ControlModifier);
        QVERIFY(scene.enter("Ajustes"));
        QVERIFY2(scene.shows("Notifications disabled in iOS"), "not read when the screen was built anew");
        scene.use("Open Settings");
        QCOMPARE(scene.world.workspace.opened, std::vector{Workspace::permissionsUrl()});
        scene.settings.setIsEnabled(false);
        scene.settle();
        QVERIFY2(!scene.shows("Notifications disabled in iOS"), "alerts are off");
    }

    void locationRows()
    {
        Scene scene;
        scene.switchAllOn();
        QVERIFY(scene.openSettings());
        for (const auto &[status, warns] : {std::pair(Location::notDetermined, false),
                                            {Location::restricted, true},
                                            {Location::authorizedWhenInUse, false},
                                            {Location::denied, true}}) {
            // It moves by itself.
            scene.world.locationService->change(status);
            scene.settle();
            QCOMPARE(scene.shows("Location permission denied"), warns);
            QCOMPARE(scene.shows("Alert radius"), !warns);
        }
        scene.use("Open Settings");
        QCOMPARE(scene.world.workspace.opened, std::vector{Workspace::permissionsUrl()});
    }

    void masterSwitchAsks()
    {
        Scene scene;
        FakeUserNotificationCenter &center = scene.world.userNotificationCenter;
        QVERIFY(scene.openSettings());
        const auto use = [&](bool answer) {
            center.answer = answer;
            scene.use("Notifications");
            return scene.settings.isEnabled() && scene.isOn("Notifications");
        };
        QVERIFY(!use(false));
        QVERIFY(!scene.settings.isEnabled() && !scene.isOn("Notifications"));
        QVERIFY(use(true));
        QCOMPARE(center.authorizationRequests, 2);
        QVERIFY(!scene.shows("Notifications disabled in iOS"));
        QVERIFY(!use(true));
        QVERIFY2(center.authorizationRequests == 2, "asked when switched off");
    }

    void answerCountsAfterTheWindowHasGone()
    {
        Scene scene;
        scene.world.userNotificationCenter.holdsAnswer = true;
        QVERIFY(scene.openSettings());
        scene.settings.setIsEnabled(true);
        scene.settle();
        scene.window().close();
        scene.world.settle();
        QVERIFY(scene.settings.isEnabled());
        scene.world.userNotificationCenter.giveAnswer(false);
        QVERIFY(!scene.settings.isEnabled());
    }

    void proximitySwitch_data()
    {
        Table<Location, bool, int, int> row;
        row("not determined", Location::notDetermined, true, 1, 0);
        row("restricted", Location::restricted, false, 0, 0);
        row("denied", Location::denied, false, 0, 0);
        row("when in use", Location::authorizedWhenInUse, true, 0, 0);
        // One start by the first callback, one by the switch.
        row("always", Location::authorizedAlways, true, 0, 2);
    }

    void proximitySwitch()
    {
        const auto [status, isOn, requests, starts] = Table<Location, bool, int, int>::current();
        Scene scene;
        scene.settings.setIsEnabled(true);
        scene.world.initialLocationStatus = status;
        QVERIFY(scene.openSettings());
        scene.use("By proximity");
        QCOMPARE(scene.settings.locationNotificationsEnabled(), isOn);
        QCOMPARE(scene.isOn("By proximity"), isOn);
        QCOMPARE(scene.shows("Alert radius"), isOn);
        QVERIFY(!scene.shows("Location permission denied"));
        QCOMPARE(scene.world.locationService->permissionRequests, requests);
        QCOMPARE(scene.world.locationService->starts, starts);

        if (isOn) {
            scene.use("By proximity");
            QCOMPARE(scene.settings.locationNotificationsEnabled(), false);
        }
    }

    void keyboardReachesEverything()
    {
        Scene scene;
        scene.switchAllOn();
        scene.world.userNotificationCenter.status = Notifications::denied;
        QVERIFY(scene.openSettings());
        QStringList order;
        for (int i = 0; i < 8; ++i) {
            scene.press(Qt::Key_Tab);
            QQuickItem *const item = scene.window().activeFocusItem();
            order.append(ShownItems::spokenName(item));
            const QRectF place = item->mapRectToScene(item->boundingRect());
            QVERIFY2(QRectF(QPointF(), scene.window().size()).contains(place), qPrintable(order.last()));
        }
        QCOMPARE(order.join(u'|'),
                 QStringLiteral("Notifications|Open Settings|By magnitude|Minimum threshold: Micro (< 2.0)|"
                                "By proximity|Radius|Swarm detection|Frecuencia: 10 minutes"));
        scene.press(Qt::Key_Tab, Qt::ShiftModifier);
        scene.press(Qt::Key_Space);
        QCOMPARE(scene.settings.swarmNotificationsEnabled(), false);
        scene.press(Qt::Key_Tab, Qt::ShiftModifier);
        scene.press(Qt::Key_Left);
        QCOMPARE(scene.settings.locationRadiusKm(), 50.0);
    }

    void pickersChoose()
    {
        Scene scene;
        scene.switchAllOn();
        scene.settings.setLocationRadiusKm(37.5);
        QVERIFY(scene.openSettings());
        QCOMPARE(scene.radius(), QString());
        scene.use("200 km");
        QCOMPARE(scene.settings.locationRadiusKm(), 200.0);
        QCOMPARE(scene.radius(), u"200 km"_s);

        scene.use("Minimum threshold: Micro (< 2.0)");
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Return})
            scene.press(key);
        QVERIFY(scene.settings.globalMagnitudeCategory() == MagnitudeCategory::strong);
        QVERIFY(scene.control("Minimum threshold: Fuerte (6.0 – 6.9)"));
        QTRY_VERIFY(!scene.control("Micro (< 2.0)"));

        QVERIFY(scene.shows("El sistema puede ajustar la frecuencia real para optimizar la batería."));
        scene.settings.setIsEnabled(false);
        scene.settle();
        scene.use("Frecuencia: 10 minutes");
        for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Up, Qt::Key_Return})
            scene.press(key);
        QVERIFY(scene.settings.refreshInterval() == RefreshInterval::disabled);
        QVERIFY(scene.shows("Las actualizaciones se realizarán únicamente de forma manual."));
        QTRY_VERIFY(!scene.control("5 minutes"));

        // Escape closes the menu before the window.
        scene.press(Qt::Key_Space);
        QTRY_VERIFY(scene.control("5 minutes"));
        scene.press(Qt::Key_Escape);
        QTRY_VERIFY(!scene.control("5 minutes"));
        QVERIFY(scene.window().isVisible());
        scene.press(Qt::Key_Escape);
        QTRY_VERIFY(!scene.window().isVisible());
    }
};

QTEST_MAIN(SettingsViewTest)
#include "SettingsViewTest.moc"
