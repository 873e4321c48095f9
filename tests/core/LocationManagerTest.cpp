// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Location/LocationManager.h"
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

    void callbacksPublishInTheirOrderAndKeepThePosition()
    {
        World world;
        LocationManager &manager = LocationManager::shared();
        world.settle();
        QList<Status> published;
        connect(&manager, &LocationManager::authorizationStatusChanged, &manager,
                [&] { published.append(manager.authorizationStatus()); });
        const QSignalSpy moved(&manager, &LocationManager::userLocationChanged);
        Q_EMIT world.locationService->locationsUpdated({{28.1, -15.4}, {28.2, -15.5}});
        Q_EMIT world.locationService->locationsUpdated({});
        for (const Status status : {Status::authorizedWhenInUse, Status::authorizedAlways, Status::denied}) {
            world.locationService->status = status;
            Q_EMIT world.locationService->authorizationChanged();
        }
        QVERIFY2(!manager.userLocation() && published.isEmpty(), "published inside the callback");
        world.settle();
        QCOMPARE(published, (QList{Status::authorizedWhenInUse, Status::authorizedAlways, Status::denied}));
        QVERIFY2(world.locationService->starts == 1, "only the full permission starts updates");
        QCOMPARE(moved.count(), 1);
        QVERIFY(manager.userLocation() == (Coordinate{28.2, -15.5}));
    }
};

QTEST_GUILESS_MAIN(LocationManagerTest)
#include "LocationManagerTest.moc"
