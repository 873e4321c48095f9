// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/ViewModels/MapViewModel.h"

#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"
#include "Core/Repositories/EarthquakeRepository.h"
#include "Support/FakeDataSource.h"
#include "Support/World.h"

#include <QTest>

namespace {
struct Fixture
{
    World world;
    ModelContainer container{{.isStoredInMemoryOnly = true}};
    FakeDataSource *source = new FakeDataSource;
    EarthquakeRepository repository{container.mainContext(), std::unique_ptr<EarthquakeDataSource>(source)};
    std::unique_ptr<MapViewModel> model = std::make_unique<MapViewModel>(repository);
};
}

class MapViewModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachAppearanceRefreshesUnlessARefreshRuns()
    {
        Fixture f;
        f.source->holdsAnswers = true;
        f.model->onAppear();
        QCOMPARE(f.source->fetches, 0);
        f.world.settle();
        QCOMPARE(f.source->fetches, 1);
        f.model->onAppear();
        f.world.settle();
        QCOMPARE(f.source->fetches, 1);
        f.source->release();
        f.model->onAppear();
        f.world.settle();
        QCOMPARE(f.source->fetches, 2);
        QVERIFY(!f.repository.isCoolingDown());
    }

    void theRefreshComesEvenIfTheScreenHasGone()
    {
        Fixture f;
        f.model->onAppear();
        f.model.reset();
        f.world.settle();
        QCOMPARE(f.source->fetches, 1);
    }

    void theListsFiltersAreNotTheMaps()
    {
        Fixture f;
        EarthquakeListViewModel list(f.repository);
        list.setSelectedFilter(MagnitudeFilter::strong);
        list.setSelectedDateFilter(DateFilter::lastHour);
        QVERIFY(f.model->selectedFilter() == MagnitudeFilter(MagnitudeFilter::all));
        QVERIFY(f.model->selectedDateFilter() == DateFilter(DateFilter::all));
        f.model->setSelectedFilter(MagnitudeFilter::low);
        QVERIFY(list.selectedFilter() == MagnitudeFilter(MagnitudeFilter::strong));
    }
};

QTEST_GUILESS_MAIN(MapViewModelTest)
#include "MapViewModelTest.moc"
