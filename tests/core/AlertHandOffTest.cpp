// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Location/LocationManager.h"
#include "Core/Notifications/NotificationSettings.h"
#include "StoreScene.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {
/// A repository with every rule switched on, the magnitude from 4.0 and the radius at 100 km.
struct Scene : StoreScene
{
    explicit Scene(const QString &path = {})
        : StoreScene(path)
    {
        NotificationSettings &settings = NotificationSettings::shared();
        settings.setIsEnabled(true);
        settings.setGlobalMagnitudeCategory(MagnitudeCategory::moderate);
        settings.setLocationNotificationsEnabled(true);
        settings.setSwarmNotificationsEnabled(true);
        world.userNotificationCenter.status = NotificationAuthorizationStatus::authorized;
    }

    ParsedEarthquake row(const QString &eventID, double magnitude, std::chrono::milliseconds age) const
    {
        return testRow(eventID, world.clock.now() - age, magnitude);
    }

    QList<ParsedEarthquake> rows(const QString &name, int count, std::chrono::milliseconds age) const
    {
        QList<ParsedEarthquake> result;
        for (int i = 0; i < count; ++i)
            result.append(row(name + QString::number(i), 1.0, age));
        return result;
    }

    /// The texts that tell the notifications of one refresh apart.
    QString refresh(const QList<ParsedEarthquake> &rows)
    {
        world.userNotificationCenter.sent.clear();
        source->rows = rows;
        repository.refresh();
        QStringList texts;
        for (const UserNotificationRequest &request : world.userNotificationCenter.sent)
            texts.append(request.title == u"Seismic swarm detected" ? request.body : request.identifier);
        return texts.join(u", "_s);
    }
};
}

class AlertHandOffTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void storedAndNewEventsMakeTheSwarm()
    {
        Scene scene;
        QCOMPARE(scene.refresh(scene.rows(u"first"_s, 6, 5min)), QString());
        QCOMPARE(scene.refresh(scene.rows(u"second"_s, 4, 1min)), u"10 earthquakes in the last 10 min"_s);
    }

    void recentMeansTheLastDay()
    {
        for (const auto age : {std::chrono::milliseconds(24h), std::chrono::milliseconds(24h + 1ms)}) {
            Scene scene;
            const auto rows = scene.rows(u"old"_s, 999, 23h) + QList{scene.row(u"strong"_s, 5.0, age)};
            const QString swarm = age > 24h ? QString() : u", 1000 earthquakes in the last 24 h"_s;
            QCOMPARE(scene.refresh(rows), u"strong"_s + swarm);
        }
    }

    void positionOfTheMomentCounts()
    {
        Scene scene;
        scene.world.initialLocationStatus = LocationAuthorizationStatus::authorizedAlways;
        QCOMPARE(scene.refresh({scene.row(u"a"_s, 2.0, 1min)}), QString());
        QVERIFY2(scene.world.locationService, "the first evaluation makes the position service");
        Q_EMIT scene.world.locationService->locationsUpdated({{27.9, -18.0}});
        scene.world.settle();
        QCOMPARE(scene.refresh({scene.row(u"b"_s, 2.0, 1min)}), u"proximity-b"_s);
    }

    void failedSaveAlertsNobody()
    {
        Scene scene;
        scene.execute(refuseInserts);
        const auto rows = scene.rows(u"a"_s, 10, 1min);
        QCOMPARE(scene.refresh(rows), QString());
        QVERIFY(scene.repository.lastError());
        scene.execute(allowInserts);
        QVERIFY2(scene.refresh(rows).isEmpty(), "what stayed pending is known and never alerts");
    }

    void eachEventOfAnOutbreakAlertsOnce()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"store.sqlite"_s);
        QMap<QString, QVariant> saved;
        QList<ParsedEarthquake> outbreak;
        QHash<QString, int> alerts;
        const auto refresh = [&alerts](Scene &scene, const QList<ParsedEarthquake> &page, bool fails = false) {
            NotificationSettings::shared().setGlobalMagnitudeCategory(MagnitudeCategory::micro);
            scene.source->fails = fails;
            scene.refresh(page);
            for (const UserNotificationRequest &request : scene.world.userNotificationCenter.sent)
                ++alerts[request.identifier];
        };
        {
            Scene scene(path);
            const QList<ParsedEarthquake> calm = scene.rows(u"calm"_s, 17, 20h);
            outbreak = calm + scene.rows(u"outbreak"_s, 1238, 90min);
            refresh(scene, calm);
            refresh(scene, outbreak, true);
            QCOMPARE(alerts.size(), 17);
            refresh(scene, outbreak);
            // Besides the events: 100 in 2 hours and 1,000 in a day, under one identifier.
            QCOMPARE(alerts.size(), 1255 + 1);
            refresh(scene, outbreak, true);
            refresh(scene, outbreak);
            saved = scene.world.userDefaults.values;
        }
        Scene scene(path);
        scene.world.userDefaults.values = saved;
        refresh(scene, outbreak);
        QVERIFY(scene.world.userNotificationCenter.sent.empty());
        QVERIFY(!scene.repository.lastError());
        for (const ParsedEarthquake &row : std::as_const(outbreak))
            QCOMPARE(alerts.value(row.eventID), 1);
    }
};

QTEST_GUILESS_MAIN(AlertHandOffTest)
#include "AlertHandOffTest.moc"
