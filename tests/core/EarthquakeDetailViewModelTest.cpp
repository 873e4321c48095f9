// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/ViewModels/EarthquakeDetailViewModel.h"
#include "StoreScene.h"
#include "Support/Table.h"

#include <QTest>

namespace {
/// Event number `number`, the later the greater.
Earthquake numberedEvent(int number)
{
    return testEarthquake(QStringLiteral("es%1").arg(number), number);
}
}

class EarthquakeDetailViewModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void limitIsTakenBeforeTheEventItself_data()
    {
        const Table<int, int, QString, QString> row;
        row("newest of many", 249, 199, "es248", "es50");
        row("last of the newest", 50, 199, "es249", "es51");
        row("older than those", 49, 200, "es249", "es50");
    }

    void limitIsTakenBeforeTheEventItself()
    {
        const auto [shown, expected, newest, oldest] = Table<int, int, QString, QString>::current();
        StoreScene scene;
        for (int number = 0; number < 250; ++number)
            scene.context.insert(numberedEvent(number));
        scene.context.save();
        // Another object for the same event, as a list of another context would hold.
        EarthquakeDetailViewModel model(numberedEvent(shown));
        model.loadNearby(scene.context);
        QCOMPARE(int(model.nearbyEarthquakes().size()), expected);
        QCOMPARE(model.nearbyEarthquakes().front().eventID(), newest);
        QCOMPARE(model.nearbyEarthquakes().back().eventID(), oldest);
        scene.execute("DROP TABLE earthquake");
        model.loadNearby(scene.context);
        QVERIFY2(model.nearbyEarthquakes().empty(), "a store that cannot be read leaves the event alone on its map");
    }
};

QTEST_GUILESS_MAIN(EarthquakeDetailViewModelTest)
#include "EarthquakeDetailViewModelTest.moc"
