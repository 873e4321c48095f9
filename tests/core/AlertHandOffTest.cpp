// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Location/LocationManager.h"
#include "Core/Notifications/NotificationSettings.h"
#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"
#include "Core/Repositories/EarthquakeRepository.h"
#include "Support/FakeDataSource.h"
#include "Support/TestEarthquake.h"
#include "Support/World.h"

#include <QTest>

#include <SQLiteCpp/Database.h>

using namespace std::chrono_literals;

namespace {
/// A repository with every rule switched on, the magnitude from 4.0 and the radius at 100 km.
struct Scene
{
    /// A run of the program over the store at `path`, in a folder of its own by default, and what a run before saved.
    explicit Scene(const QString &path = {}, const QMap<QString, QVariant> &saved = {})
        : container({.path = path.isEmpty() ? world.folder.filePath(QStringLiteral("store.sqlite")) : path})
    {
        world.userDefaults.values = saved;
        NotificationSettings &settings = NotificationSettings::shared();
        settings.setIsEnabled(true);
        settings.setGlobalMagnitudeCategory(MagnitudeCategory::moderate);
        settings.setLocationNotificationsEnabled(true);
        settings.setSwarmNotificationsEnabled(true);
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
            texts.append(request.title == QStringLiteral("Seismic swarm detected") ? request.body : request.identifier);
        return texts.join(QStringLiteral(", "));
    }

    void execute(const char *sql) const
    {
        SQLite::Database(container.location().toStdString(), SQLite::OPEN_READWRITE).exec(sql);
    }

    World world;
    ModelContainer container;
    FakeDataSource *source = new FakeDataSource;
    EarthquakeRepository repository{container.mainContext(), std::unique_ptr<EarthquakeDataSource>(source)};
};
}

class AlertHandOffTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void storedAndNewEventsMakeTheSwarm()
    {
        Scene scene;
        QCOMPARE(scene.refresh(scene.rows(QStringLiteral("first"), 6, 5min)), QString());
        QCOMPARE(scene.refresh(scene.rows(QStringLiteral("second"), 4, 1min)),
                 QStringLiteral("10 earthquakes in the last 10 min"));
    }

    void recentMeansTheLastDay()
    {
        for (const auto age : {std::chrono::milliseconds(24h), std::chrono::milliseconds(24h + 1ms)}) {
            Scene scene;
            auto rows = scene.rows(QStringLiteral("old"), 999, 23h);
            rows.append(scene.row(QStringLiteral("strong"), 5.0, age));
            const QString swarm = age > 24h ? QString() : QStringLiteral(", 1000 earthquakes in the last 24 h");
            QCOMPARE(scene.refresh(rows), QStringLiteral("strong") + swarm);
        }
    }

    void positionOfTheMomentCounts()
    {
        Scene scene;
        scene.world.initialLocationStatus = LocationAuthorizationStatus::authorizedAlways;
        QVERIFY(!scene.world.locationService);
        QCOMPARE(scene.refresh({scene.row(QStringLiteral("a"), 2.0, 1min)}), QString());
        QVERIFY2(scene.world.locationService, "the first evaluation makes the position service");
        Q_EMIT scene.world.locationService->locationsUpdated({{27.9, -18.0}});
        scene.world.settle();
        QCOMPARE(scene.refresh({scene.row(QStringLiteral("b"), 2.0, 1min)}), QStringLiteral("proximity-b"));
    }

    void failedSaveAlertsNobody()
    {
        Scene scene;
        scene.execute("CREATE TRIGGER refuse BEFORE INSERT ON earthquake BEGIN SELECT RAISE(ABORT, 'full'); END");
        const auto rows = scene.rows(QStringLiteral("a"), 10, 1min);
        QCOMPARE(scene.refresh(rows), QString());
        QVERIFY(scene.repository.lastError());
        scene.execute("DROP TRIGGER refuse");
        QCOMPARE(scene.refresh(rows), QString());
        QVERIFY2(!scene.world.userDefaults.values.contains(QStringLiteral("swarm.lastNotified.10in10")),
                 "what stayed pending is known and never alerts");
    }

    void eachEventOfAnOutbreakAlertsOnce()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("store.sqlite"));
        QMap<QString, QVariant> saved;
        QList<ParsedEarthquake> outbreak;
        QHash<QString, int> alerts;
        const auto refresh = [&alerts](Scene &scene, const QList<ParsedEarthquake> &page) {
            NotificationSettings::shared().setGlobalMagnitudeCategory(MagnitudeCategory::micro);
            scene.refresh(page);
            for (const UserNotificationRequest &request : scene.world.userNotificationCenter.sent)
                ++alerts[request.identifier];
        };
        {
            Scene scene(path);
            const QList<ParsedEarthquake> calm = scene.rows(QStringLiteral("calm"), 17, 20h);
            outbreak = calm + scene.rows(QStringLiteral("outbreak"), 1238, 90min);
            refresh(scene, calm);
            QCOMPARE(alerts.size(), 17);
            scene.source->fails = true;
            refresh(scene, outbreak);
            QCOMPARE(alerts.size(), 17);
            scene.source->fails = false;
            refresh(scene, outbreak);
            // Besides the events: 100 in 2 hours and 1,000 in a day, under one identifier.
            QCOMPARE(alerts.size(), 1255 + 1);
            scene.source->fails = true;
            refresh(scene, outbreak);
            scene.source->fails = false;
            refresh(scene, outbreak);
            saved = scene.world.userDefaults.values;
        }
        Scene scene(path, saved);
        refresh(scene, outbreak);
        QVERIFY(scene.world.userNotificationCenter.sent.empty());
        QVERIFY(!scene.repository.lastError());
        for (const ParsedEarthquake &row : std::as_const(outbreak))
            QCOMPARE(alerts.value(row.eventID), 1);
    }

    void unreadableStoreStillAlertsOfTheNew()
    {
        Scene scene;
        QObject::connect(&scene.container, &ModelContainer::didSave, &scene.container,
                         [&scene] { scene.execute("ALTER TABLE earthquake RENAME TO gone"); });
        auto rows = scene.rows(QStringLiteral("a"), 10, 1min);
        rows.append(scene.row(QStringLiteral("strong"), 6.0, 1min));
        QCOMPARE(scene.refresh(rows), QStringLiteral("strong"));
        QVERIFY(!scene.repository.lastError());
    }
};

QTEST_GUILESS_MAIN(AlertHandOffTest)
#include "AlertHandOffTest.moc"
