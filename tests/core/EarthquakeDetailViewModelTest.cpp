// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/ViewModels/EarthquakeDetailViewModel.h"
#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"
#include "Support/Table.h"
#include "Support/World.h"

#include <QTest>

#include <SQLiteCpp/Database.h>

namespace {
/// Event number `number`, the later the greater.
Earthquake numberedEvent(const World &world, int number)
{
    return Earthquake(QStringLiteral("es%1").arg(number), world.clock.now() + std::chrono::minutes(number), 28.0, -16.5,
                      10.0, 1.5, QStringLiteral("mbLg"), std::nullopt, QStringLiteral("W FRONTERA.IHI"));
}
}

class EarthquakeDetailViewModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void limitIsTakenBeforeTheEventItself_data()
    {
        const Table<int, int, int, QString, QString> row;
        row("alone", 1, 0, 0, QString(), QString());
        row("newest of many", 250, 249, 199, "es248", "es50");
        row("last of the newest", 250, 50, 199, "es249", "es51");
        row("older than those", 250, 49, 200, "es249", "es50");
    }

    void limitIsTakenBeforeTheEventItself()
    {
        const auto [stored, shown, expected, newest, oldest] = Table<int, int, int, QString, QString>::current();
        World world;
        ModelContainer container({.isStoredInMemoryOnly = true});
        for (int number = 0; number < stored; ++number)
            container.mainContext().insert(numberedEvent(world, number));
        container.mainContext().save();

        // Another object for the same event, as a list of another context would hold.
        EarthquakeDetailViewModel model(numberedEvent(world, shown));
        model.loadNearby(container.mainContext());
        model.loadNearby(container.mainContext());

        const auto &nearby = model.nearbyEarthquakes();
        QCOMPARE(int(nearby.size()), expected);
        if (!nearby.empty()) {
            QCOMPARE(nearby.front().eventID(), newest);
            QCOMPARE(nearby.back().eventID(), oldest);
        }
    }

    void failureEmptiesTheList()
    {
        World world;
        ModelContainer container({.path = world.folder.filePath(QStringLiteral("store.sqlite"))});
        container.mainContext().insert(numberedEvent(world, 1));
        container.mainContext().save();
        EarthquakeDetailViewModel model(numberedEvent(world, 2));
        model.loadNearby(container.mainContext());
        QCOMPARE(model.nearbyEarthquakes().size(), size_t(1));
        SQLite::Database(container.location().toStdString(), SQLite::OPEN_READWRITE).exec("DROP TABLE earthquake");
        model.loadNearby(container.mainContext());
        QVERIFY(model.nearbyEarthquakes().empty());
    }
};

QTEST_GUILESS_MAIN(EarthquakeDetailViewModelTest)
#include "EarthquakeDetailViewModelTest.moc"
