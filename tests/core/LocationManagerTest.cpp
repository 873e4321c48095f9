// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Location/LocationManager.h"
#include "Support/Table.h"
#include "Support/World.h"

#include <QSignalSpy>
#include <QTest>

using Status = LocationAuthorizationStatus;

class LocationManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void beginsQuietly()
    {
        World world;
        world.initialLocationStatus = Status::authorizedAlways;
        const LocationManager &manager = LocationManager::shared();
        QVERIFY(manager.authorizationStatus() == Status::authorizedAlways);
        QVERIFY(!manager.userLocation());
        QCOMPARE(world.locationService->distanceFilter, 500.0);
        QCOMPARE(world.locationService->permissionRequests, 0);
        QCOMPARE(world.locationService->starts, 0);
    }

    void onlyTheFullPermissionStartsUpdates_data()
    {
        const Table<Status, int> row;
        row("not determined", Status::notDetermined, 0);
        row("when in use", Status::authorizedWhenInUse, 0);
        row("always", Status::authorizedAlways, 1);
    }

    void onlyTheFullPermissionStartsUpdates()
    {
        const auto [status, starts] = Table<Status, int>::current();
        World world;
        LocationManager &manager = LocationManager::shared();
        world.settle();
        world.locationService->status = status;
        Q_EMIT world.locationService->authorizationChanged();
        QVERIFY2(manager.authorizationStatus() == Status::notDetermined, "published inside the callback");
        world.settle();
        QVERIFY(manager.authorizationStatus() == status);
        QCOMPARE(world.locationService->starts, starts);
        manager.startUpdatingIfAuthorized();
        QCOMPARE(world.locationService->starts, 2 * starts);
        QCOMPARE(world.locationService->permissionRequests, 0);
    }

    void callbacksPublishInTheirOrderAndKeepThePosition()
    {
        World world;
        LocationManager &manager = LocationManager::shared();
        world.settle();
        QList<Status> published;
        connect(&manager, &LocationManager::authorizationStatusChanged, &manager,
                [&] { published.append(manager.authorizationStatus()); });
        Q_EMIT world.locationService->locationsUpdated({{28.1, -15.4}});
        for (const Status status : {Status::authorizedAlways, Status::denied}) {
            world.locationService->status = status;
            Q_EMIT world.locationService->authorizationChanged();
        }
        world.settle();
        QCOMPARE(published, (QList{Status::authorizedAlways, Status::denied}));
        QVERIFY(manager.userLocation() == (Coordinate{28.1, -15.4}));
    }

    void lastOfThePositionsCounts()
    {
        World world;
        LocationManager &manager = LocationManager::shared();
        world.settle();
        QSignalSpy told(&manager, &LocationManager::userLocationChanged);
        Q_EMIT world.locationService->locationsUpdated({{28.1, -15.4}, {28.2, -15.5}});
        QVERIFY2(!manager.userLocation(), "published inside the callback");
        world.settle();
        QCOMPARE(told.count(), 1);
        QVERIFY(manager.userLocation() == (Coordinate{28.2, -15.5}));

        Q_EMIT world.locationService->locationsUpdated({});
        world.settle();
        QCOMPARE(told.count(), 1);
    }

    void asksThroughTheService()
    {
        World world;
        LocationManager::shared().requestPermission();
        QCOMPARE(world.locationService->permissionRequests, 1);
    }
};

QTEST_GUILESS_MAIN(LocationManagerTest)
#include "LocationManagerTest.moc"
