// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Location/LocationManager.h"
#include "Core/Notifications/NotificationSettings.h"
#include "Support/ShownWindow.h"
#include "Support/Table.h"
#include "iOS/Ajustes/SettingsScreen.h"

#include <QAccessible>
#include <QTest>

#include <algorithm>

using Notifications = NotificationAuthorizationStatus;
using Location = LocationAuthorizationStatus;

namespace {
/// The settings window; the question of the first start lies in the past.
struct Scene : ShownWindow
{
    Scene()
    {
        world.userDefaults.values.insert(QStringLiteral("settings.hasAskedNotifPermission"), true);
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
    QQuickItem *control(const char *name) const
    {
        const QList<QQuickItem *> controls = itemsOf("PressableItem");
        const auto found = std::ranges::find_if(controls, [&](QQuickItem *item) {
            QAccessibleInterface *const accessible = QAccessible::queryAccessibleInterface(item);
            return accessible && accessible->text(QAccessible::Name) == QString::fromUtf8(name);
        });
        return found == controls.end() ? nullptr : *found;
    }

    void use(const char *name) { click(control(name)); }

    bool isOn(const char *name) const { return control(name)->property("on").toBool(); }

    /// The chosen radius, or nothing.
    QString radius() const
    {
        for (const char *name : {"50 km", "100 km", "200 km", "500 km"})
            if (control(name)->property("chosen").toBool())
                return QString::fromLatin1(name);
        return {};
    }

    QString focused() const
    {
        QAccessibleInterface *const item = QAccessible::queryAccessibleInterface(window().activeFocusItem());
        return item ? item->text(QAccessible::Name) : QString();
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

        scene.switchAllOn();
        scene.settings.setGlobalMagnitudeEnabled(false);
        scene.settle();
        QVERIFY(scene.shows("Alert radius") && scene.shows("1,000 earthquakes in 24 hours"));
        QVERIFY(!scene.shows("Minimum threshold"));
        QVERIFY(!scene.shows("You will receive a notification for earthquakes of magnitude 4.0 – 5.9 or higher."));
        QCOMPARE(faultsOfItems(scene.window()), QStringList());

        QObject *const screen = scene.window().findChild<SettingsScreen *>();
        QCOMPARE(screen->property("showInfo"), QVariant(false));
        QVERIFY(screen->setProperty("showInfo", true));
    }

    void notificationWarning_data()
    {
        Table<bool, Notifications, bool> row;
        row("denied", true, Notifications::denied, true);
        row("denied, alerts off", false, Notifications::denied, false);
        row("not determined", true, Notifications::notDetermined, false);
        row("authorized", true, Notifications::authorized, false);
    }

    void notificationWarning()
    {
        const auto [isEnabled, status, warns] = Table<bool, Notifications, bool>::current();
        Scene scene;
        scene.settings.setIsEnabled(isEnabled);
        scene.world.userNotificationCenter.status = status;
        QVERIFY(scene.openSettings());
        QCOMPARE(scene.shows("Notifications disabled in iOS"), warns);
        if (warns) {
            scene.use("Open Settings");
            QCOMPARE(scene.world.workspace.opened, std::vector{Workspace::permissionsUrl()});
        }
    }

    void notificationStatusIsReadAtItsMomentsOnly()
    {
        Scene scene;
        scene.switchAllOn();
        scene.world.userNotificationCenter.status = Notifications::authorized;
        scene.world.userNotificationCenter.answer = false;
        QVERIFY(scene.openSettings());
        scene.world.userNotificationCenter.status = Notifications::denied;
        scene.settings.setSwarmNotificationsEnabled(false);
        scene.settle();
        QVERIFY2(!scene.shows("Notifications disabled in iOS"), "read at another setting's change");
        scene.window().close();
        QVERIFY(scene.enter("Terremotos"));
        scene.press(Qt::Key_Comma, Qt::ControlModifier);
        QVERIFY(scene.enter("Ajustes"));
        QVERIFY2(scene.shows("Notifications disabled in iOS"), "not read when the screen was built anew");
    }

    void locationRows_data()
    {
        Table<Location, bool> row;
        row("not determined", Location::notDetermined, false);
        row("restricted", Location::restricted, true);
        row("denied", Location::denied, true);
        row("when in use", Location::authorizedWhenInUse, false);
    }

    void locationRows()
    {
        const auto [status, warns] = Table<Location, bool>::current();
        Scene scene;
        scene.switchAllOn();
        QVERIFY(scene.openSettings());
        QVERIFY(scene.shows("Alert radius"));
        // It moves by itself.
        scene.world.locationService->change(status);
        scene.settle();
        QCOMPARE(scene.shows("Location permission denied"), warns);
        QCOMPARE(scene.shows("Alert radius"), !warns);
        if (warns) {
            scene.use("Open Settings");
            QCOMPARE(scene.world.workspace.opened, std::vector{Workspace::permissionsUrl()});
        }
    }

    void masterSwitchAsks_data()
    {
        Table<QVariant, bool> row;
        row("granted", QVariant(true), true);
        row("refused", QVariant(false), false);
        row("no service", QVariant(), false);
    }

    void masterSwitchAsks()
    {
        const auto [answer, isEnabled] = Table<QVariant, bool>::current();
        Scene scene;
        FakeUserNotificationCenter &center = scene.world.userNotificationCenter;
        if (answer.isValid())
            center.answer = answer.toBool();
        center.status = Notifications::denied; // until the answer
        QVERIFY(scene.openSettings());
        scene.use("Notifications");
        QCOMPARE(center.authorizationRequests, 1);
        QCOMPARE(scene.settings.isEnabled(), isEnabled);
        QCOMPARE(scene.isOn("Notifications"), isEnabled);
        QCOMPARE(scene.world.userDefaults.values.value(QStringLiteral("notificationsEnabled")), isEnabled);
        QVERIFY(!scene.shows("Notifications disabled in iOS"));

        if (isEnabled) {
            scene.use("Notifications");
            QCOMPARE(scene.settings.isEnabled(), false);
            QVERIFY2(center.authorizationRequests == 1, "asked when switched off");
        }
    }

    void answerCountsAfterTheWindowHasGone()
    {
        Scene scene;
        scene.world.userNotificationCenter.answer = false;
        QVERIFY(scene.openSettings());
        scene.settings.setIsEnabled(true);
        QCoreApplication::sendPostedEvents();
        scene.window().close();
        scene.world.settle();
        QCOMPARE(scene.settings.isEnabled(), false);
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
        scene.world.userDefaults.writes.clear();
        scene.use("By proximity");
        QCOMPARE(scene.settings.locationNotificationsEnabled(), isOn);
        QVERIFY2(scene.isOn("By proximity") == isOn, "the switch shows the setting");
        QCOMPARE(scene.world.userDefaults.writes.contains(QStringLiteral("settings.locationEnabled")), isOn);
        QCOMPARE(scene.shows("Alert radius"), isOn);
        QVERIFY(!scene.shows("Location permission denied"));
        QCOMPARE(scene.world.locationService->permissionRequests, requests);
        QCOMPARE(scene.world.locationService->starts, starts);

        if (isOn) {
            scene.use("By proximity");
            QCOMPARE(scene.settings.locationNotificationsEnabled(), false);
        }
    }

    void positionServiceIsMadeWithTheScreen()
    {
        Scene scene;
        QVERIFY(scene.show());
        QVERIFY(!scene.world.locationService);
        scene.press(Qt::Key_Comma, Qt::ControlModifier);
        QVERIFY(scene.enter("Ajustes"));
        QVERIFY(scene.world.locationService);
    }

    void otherSwitches()
    {
        Scene scene;
        scene.settings.setIsEnabled(true);
        QVERIFY(scene.openSettings());
        scene.use("By magnitude");
        QCOMPARE(scene.settings.globalMagnitudeEnabled(), false);
        QVERIFY(!scene.isOn("By magnitude"));
        scene.use("Swarm detection");
        QCOMPARE(scene.settings.swarmNotificationsEnabled(), true);
        QVERIFY(scene.isOn("Swarm detection"));
    }

    void radiusOutsideTheChoicesSelectsNone()
    {
        Scene scene;
        scene.switchAllOn();
        scene.settings.setLocationRadiusKm(37.5);
        QVERIFY(scene.openSettings());
        QCOMPARE(scene.radius(), QString());
        scene.use("200 km");
        QCOMPARE(scene.settings.locationRadiusKm(), 200.0);
        QCOMPARE(scene.radius(), QStringLiteral("200 km"));
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
            order.append(scene.focused());
            const QQuickItem *const item = scene.window().activeFocusItem();
            const QRectF place = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
            QVERIFY2(QRectF(QPointF(), scene.window().size()).contains(place), qPrintable(scene.focused()));
        }
        QCOMPARE(order.join(u'|'),
                 QStringLiteral("Notifications|Open Settings|By magnitude|Minimum threshold: Micro (< 2.0)|"
                                "By proximity|Radius|Swarm detection|Frecuencia: 10 minutes"));
        scene.press(Qt::Key_Tab, Qt::ShiftModifier);
        scene.press(Qt::Key_Space);
        QCOMPARE(scene.settings.swarmNotificationsEnabled(), false);
        scene.press(Qt::Key_Tab, Qt::ShiftModifier);
        scene.press(Qt::Key_Right);
        QCOMPARE(scene.settings.locationRadiusKm(), 200.0);
        scene.press(Qt::Key_Left);
        scene.press(Qt::Key_Left);
        scene.press(Qt::Key_Left);
        QCOMPARE(scene.settings.locationRadiusKm(), 50.0);
    }

    void pickersChoose()
    {
        Scene scene;
        scene.settings.setIsEnabled(true);
        QVERIFY(scene.openSettings());
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
    }

    void escapeClosesTheMenuBeforeTheWindow()
    {
        Scene scene;
        QVERIFY(scene.openSettings());
        scene.use("Frecuencia: 10 minutes");
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
