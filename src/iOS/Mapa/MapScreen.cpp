// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Mapa/MapScreen.h"

#include "Core/Models/Region.h"
#include "Core/Persistence/EarthquakeQuery.h"
#include "Platform/NotificationCenter/NotificationCenter.h"
#include "Platform/Support/Platform.h"
#include "Platform/Text/NumberFormat.h"

using namespace std::chrono_literals;

namespace {
/// An event passes out of a date filter by itself as time goes by.
constexpr auto redrawPeriod = 60s;
}

MapScreen::MapScreen(QObject *parent)
    : QObject(parent)
    , m_dates(DateFormatter::Form::skeleton, QStringLiteral("dMMMyjm"), QStringLiteral("UTC"))
{
}

MapScreen::~MapScreen() = default;

void MapScreen::componentComplete()
{
    m_viewModel = std::make_unique<MapViewModel>(*m_repository);
    watch();
    m_redrawTask = Task::start(Platform::current().clock, this, [this](Task &task) { tick(task); });
    redraw();
}

/// Everything that the screen is drawn from.
void MapScreen::watch()
{
    const auto redrawAt = [this](auto *source, auto signal) { connect(source, signal, this, &MapScreen::redraw); };
    connect(&m_container->earthquakes(), &EarthquakeQuery::changed, this, [this] {
        m_shown.reset();
        redraw();
    });
    redrawAt(m_repository, &EarthquakeRepository::isLoadingChanged);
    redrawAt(m_repository, &EarthquakeRepository::lastUpdatedChanged);
    redrawAt(m_repository, &EarthquakeRepository::lastErrorChanged);
    redrawAt(m_repository, &EarthquakeRepository::isCoolingDownChanged);
    redrawAt(m_repository, &EarthquakeRepository::cooldownRemainingSecondsChanged);
    redrawAt(m_viewModel.get(), &MapViewModel::selectedFilterChanged);
    redrawAt(m_viewModel.get(), &MapViewModel::selectedDateFilterChanged);
    redrawAt(m_viewModel.get(), &MapViewModel::selectedEarthquakeChanged);
    connect(m_viewModel.get(), &MapViewModel::selectedEarthquakeChanged, this, &MapScreen::showSelection);
    connect(&NotificationCenter::defaultCenter(), &NotificationCenter::posted, this, &MapScreen::answerMenu);
}

void MapScreen::tick(Task &task)
{
    task.sleep(redrawPeriod, [this](Task &awake) {
        redraw();
        tick(awake);
    });
}

void MapScreen::redraw()
{
    const EarthquakeQuery &query = m_container->earthquakes();
    const auto cutoff = m_viewModel->selectedDateFilter().cutoffDate();
    const Choice choice{m_viewModel->selectedFilter().category(), cutoff ? query.countSince(*cutoff) : query.count()};
    if (m_shown != choice) {
        m_markers.setEarthquakes(chosen(choice));
        m_shown = choice;
    }
    Q_EMIT redrawn();
}

void MapScreen::showSelection()
{
    m_markers.setSelected(m_viewModel->selectedEarthquake());
    if (m_viewModel->selectedEarthquake())
        m_called = m_viewModel->selectedEarthquake();
    Q_EMIT calloutChanged();
}

std::vector<Earthquake> MapScreen::chosen(const Choice &choice) const
{
    const EarthquakeQuery &query = m_container->earthquakes();
    const auto &all = query.earthquakes();
    if (!choice.category)
        return {all.begin(), all.begin() + choice.newest};
    std::vector<Earthquake> kept;
    for (qsizetype i = 0; i < choice.newest; ++i)
        if (query.bands()[size_t(i)] == choice.category->band())
            kept.push_back(all[size_t(i)]);
    return kept;
}

void MapScreen::answerMenu(const QString &notification)
{
    if (m_isActive && notification == NotificationName::openFilter)
        setProperty("showFilterPopover", true);
}

CoordinateRegion MapScreen::region() const
{
    return Region::canaryIslands().mapRegion();
}

bool MapScreen::isLoading() const
{
    return m_repository && m_repository->isLoading();
}

int MapScreen::selectedFilter() const
{
    return m_viewModel ? m_viewModel->selectedFilter().choice() : 0;
}

int MapScreen::selectedDateFilter() const
{
    return m_viewModel ? m_viewModel->selectedDateFilter().choice() : 0;
}

bool MapScreen::hasCallout() const
{
    return m_viewModel && m_viewModel->selectedEarthquake().has_value();
}

QString MapScreen::location() const
{
    return m_called ? m_called->location() : QString();
}

QString MapScreen::dateText(const Earthquake &earthquake) const
{
    return m_dates.string(earthquake.date()) + QStringLiteral(" UTC");
}

double MapScreen::magnitude() const
{
    return m_called ? m_called->magnitude() : 0;
}

QString MapScreen::magnitudeType() const
{
    return m_called ? m_called->magnitudeType() : QString();
}

QString MapScreen::depthText() const
{
    return m_called ? kilometersText(m_called->depth()) : QString();
}

void MapScreen::setSelectedFilter(int choice)
{
    m_viewModel->setSelectedFilter(MagnitudeFilter::Choice(choice));
}

void MapScreen::setSelectedDateFilter(int choice)
{
    m_viewModel->setSelectedDateFilter(DateFilter::Choice(choice));
}

void MapScreen::appear()
{
    m_viewModel->onAppear();
    m_isActive = true;
}

void MapScreen::disappear()
{
    m_isActive = false;
}

void MapScreen::resetFilters()
{
    m_viewModel->setSelectedFilter(MagnitudeFilter::all);
    m_viewModel->setSelectedDateFilter(DateFilter::all);
}

bool MapScreen::hasMarkerAt(EarthquakeMarkerLayer *layer, const QPointF &point) const
{
    return layer->earthquakeAt(point, false).has_value();
}

void MapScreen::dismissCallout()
{
    m_viewModel->setSelectedEarthquake(std::nullopt);
}

void MapScreen::viewDetail()
{
    if (const auto selected = m_viewModel->selectedEarthquake())
        Q_EMIT detailRequested({*selected});
}

void MapScreen::toggle(const Earthquake &earthquake)
{
    const auto &selected = m_viewModel->selectedEarthquake();
    if (selected && selected->eventID() == earthquake.eventID())
        m_viewModel->setSelectedEarthquake(std::nullopt);
    else
        m_viewModel->setSelectedEarthquake(earthquake);
}
