// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/DataSources/EarthquakeDataSource.h"
#include "Core/Location/LocationManager.h"
#include "Core/Models/Region.h"
#include "Core/Notifications/NotificationSettings.h"
#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"
#include "Core/Repositories/EarthquakeRepository.h"
#include "Support/World.h"

#include <QTest>

#include <SQLiteCpp/Database.h>

using namespace std::chrono_literals;

namespace {
/// A source that answers at once with the rows of the moment.
class ReadySource : public EarthquakeDataSource
{
public:
    const Region &region() const override { return Region::canaryIslands(); }
    QFuture<QList<ParsedEarthquake>> fetchEarthquakes() override { return QtFuture::makeReadyFuture(rows); }

    QList<ParsedEarthquake> rows;
};

/// A repository with every rule switched on, the magnitude from 4.0 and the radius at 100 km.
struct Scene
{
    Scene()
    {
        NotificationSettings &settings = NotificationSettings::shared();
        settings.setIsEnabled(true);
        settings.setGlobalMagnitudeCategory(MagnitudeCategory::moderate);
        settings.setLocationNotificationsEnabled(true);
        settings.setSwarmNotificationsEnabled(true);
    }

    ParsedEarthquake row(const QString &eventID, double magnitude, std::chrono::milliseconds age) const
    {
        return {.eventID = eventID,
                .date = world.clock.now() - age,
                .latitude = 27.8,
                .longitude = -18.1,
                .depth = 10,
                .magnitude = magnitude,
                .magnitudeType = QStringLiteral("mbLg"),
                .maxIntensity = {},
                .location = QStringLiteral("SW HIERRO")};
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
    ModelContainer container{{.path = world.folder.filePath(QStringLiteral("store.sqlite"))}};
    ReadySource *source = new ReadySource;
    EarthquakeRepository repository{container.mainContext(), std::unique_ptr<EarthquakeDataSource>(source)};
};
}

class AlertHandOffTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyWhatIsNewAlerts()
    {
        Scene scene;
        const auto strong = scene.row(QStringLiteral("a"), 5.0, 1min);
        QCOMPARE(scene.refresh({scene.row(QStringLiteral("b"), 4.0, 2min), strong}), QStringLiteral("b, a"));
        QCOMPARE(scene.refresh({strong}), QString());
        QCOMPARE(scene.refresh({strong, scene.row(QStringLiteral("c"), 4.5, 0min)}), QStringLiteral("c"));
    }

    void storedAndNewEventsMakeTheSwarm()
    {
        Scene scene;
        QCOMPARE(scene.refresh(scene.rows(QStringLiteral("first"), 6, 5min)), QString());
        QCOMPARE(scene.refresh(scene.rows(QStringLiteral("second"), 4, 1min)),
                 QStringLiteral("10 earthquakes in the last 10 min"));
    }

    void recentMeansTheLastDay_data()
    {
        QTest::addColumn<std::chrono::milliseconds>("age");
        QTest::addColumn<QString>("alerts");
        QTest::newRow("24 h old") << std::chrono::milliseconds(24h)
                                  << QStringLiteral("strong, 1000 earthquakes in the last 24 h");
        QTest::newRow("older") << std::chrono::milliseconds(24h + 1ms) << QStringLiteral("strong");
    }

    void recentMeansTheLastDay()
    {
        QFETCH(std::chrono::milliseconds, age);
        Scene scene;
        auto rows = scene.rows(QStringLiteral("old"), 999, 23h);
        rows.append(scene.row(QStringLiteral("strong"), 5.0, age));
        QTEST(scene.refresh(rows), "alerts");
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
