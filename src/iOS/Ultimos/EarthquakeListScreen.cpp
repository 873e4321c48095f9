// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Ultimos/EarthquakeListScreen.h"

#include "Core/Persistence/EarthquakeQuery.h"
#include "Platform/NotificationCenter/NotificationCenter.h"
#include "Platform/Support/Platform.h"
#include "Platform/Text/Localization.h"
#include "Platform/Text/TextSearch.h"

using namespace std::chrono_literals;

namespace {
constexpr auto subtitlePeriod = 60s;

const QString id24h = QStringLiteral("24h");
const QString id7d = QStringLiteral("7d");
const QString id30d = QStringLiteral("30d");
}

EarthquakeListScreen::EarthquakeListScreen(QObject *parent)
    : QObject(parent)
    , m_sectionDates(DateFormatter::Form::pattern, QStringLiteral("d MMM yyyy"))
{
}

EarthquakeListScreen::~EarthquakeListScreen() = default;

void EarthquakeListScreen::componentComplete()
{
    m_viewModel = std::make_unique<EarthquakeListViewModel>(*m_repository);
    watch();
    m_subtitleTimer = Task::start(Platform::current().clock, this, [this](Task &task) { tick(task); });
    redraw();
}

/// Everything that the screen is drawn from.
void EarthquakeListScreen::watch()
{
    const auto redrawAt = [this](auto *source, auto signal) {
        connect(source, signal, this, &EarthquakeListScreen::redraw);
    };
    redrawAt(&m_container->earthquakes(), &EarthquakeQuery::changed);
    redrawAt(m_repository, &EarthquakeRepository::isLoadingChanged);
    redrawAt(m_repository, &EarthquakeRepository::lastUpdatedChanged);
    redrawAt(m_repository, &EarthquakeRepository::isCoolingDownChanged);
    redrawAt(m_repository, &EarthquakeRepository::cooldownRemainingSecondsChanged);
    redrawAt(m_viewModel.get(), &EarthquakeListViewModel::selectedFilterChanged);
    redrawAt(m_viewModel.get(), &EarthquakeListViewModel::selectedDateFilterChanged);
    redrawAt(m_viewModel.get(), &EarthquakeListViewModel::debouncedSearchTextChanged);
    connect(m_viewModel.get(), &EarthquakeListViewModel::searchTextChanged, this,
            &EarthquakeListScreen::searchTextChanged);
    connect(&NotificationCenter::defaultCenter(), &NotificationCenter::posted, this, &EarthquakeListScreen::answerMenu);
}

/// Keeps the subtitle and the sections true as time passes.
void EarthquakeListScreen::tick(Task &task)
{
    task.sleep(subtitlePeriod, [this](Task &awake) {
        redraw();
        tick(awake);
    });
}

void EarthquakeListScreen::redraw()
{
    m_now = Platform::current().clock.now();
    const EarthquakeQuery &query = m_container->earthquakes();
    const RecentEarthquakes::Filter filter{
        .category = m_viewModel->selectedFilter().category(),
        .cutoff = m_viewModel->selectedDateFilter().cutoffDate(),
        .foldedLocation = foldedForSearch(trimmedOfBlanks(m_viewModel->debouncedSearchText())),
    };
    m_recent.evaluate(query, filter, RecentEarthquakes::Cutoffs(m_now));
    const auto &counts = m_recent.sectionCounts();
    m_rows.show(query.earthquakes(), m_recent.places(), {{id24h, counts[0]}, {id7d, counts[1]}, {id30d, counts[2]}});
    if (query.isEmpty())
        m_filling = isLoading() ? Filling::Loading : Filling::Empty;
    else
        m_filling = m_recent.isEmpty() ? Filling::NoResults : Filling::List;
    Q_EMIT redrawn();
}

void EarthquakeListScreen::answerMenu(const QString &notification)
{
    if (!m_isActive)
        return;
    if (notification == NotificationName::focusSearch)
        setSearchPresented(true);
    if (notification == NotificationName::openFilter)
        setProperty("showFilterPopover", true);
}

QVariantMap EarthquakeListScreen::sectionTitles() const
{
    QVariantMap titles;
    for (const QString &id : {id24h, id7d, id30d})
        titles.insert(id, sectionTitle(id));
    return titles;
}

QString EarthquakeListScreen::sectionTitle(const QString &id) const
{
    const RecentEarthquakes::Cutoffs cutoffs(m_now);
    const QString now = m_sectionDates.string(m_now);
    const QString weekAgo = m_sectionDates.string(cutoffs.last7d);
    if (id == id24h)
        return formatted(localized("list.section.24h", QStringLiteral("Last 24h – %@")), {now});
    if (id == id7d)
        return formatted(localized("list.section.7d", QStringLiteral("Last 7 days – %@ – %@")), {weekAgo, now});
    if (id == id30d)
        return formatted(localized("list.section.30d", QStringLiteral("Last 30 days – %@ – %@")),
                         {m_sectionDates.string(cutoffs.last30d), weekAgo});
    return id;
}

QString EarthquakeListScreen::subtitle() const
{
    return m_viewModel ? m_viewModel->lastUpdatedSubtitle().value_or(QString()) : QString();
}

bool EarthquakeListScreen::isLoading() const
{
    return m_viewModel && m_repository->isLoading();
}

bool EarthquakeListScreen::isCoolingDown() const
{
    return m_viewModel && m_repository->isCoolingDown();
}

double EarthquakeListScreen::cooldownProgress() const
{
    return m_viewModel ? 1 - double(m_repository->cooldownRemainingSeconds()) / EarthquakeRepository::cooldownSeconds
                       : 0;
}

int EarthquakeListScreen::selectedFilter() const
{
    return m_viewModel ? m_viewModel->selectedFilter().choice() : MagnitudeFilter::all;
}

int EarthquakeListScreen::selectedDateFilter() const
{
    return m_viewModel ? m_viewModel->selectedDateFilter().choice() : DateFilter::all;
}

QString EarthquakeListScreen::searchText() const
{
    return m_viewModel ? m_viewModel->searchText() : QString();
}

void EarthquakeListScreen::setSelectedFilter(int choice)
{
    m_viewModel->setSelectedFilter(MagnitudeFilter::Choice(choice));
}

void EarthquakeListScreen::setSelectedDateFilter(int choice)
{
    m_viewModel->setSelectedDateFilter(DateFilter::Choice(choice));
}

void EarthquakeListScreen::setSearchText(const QString &text)
{
    m_viewModel->setSearchText(text);
}

void EarthquakeListScreen::setSearchPresented(bool isPresented)
{
    if (isPresented == m_isSearchPresented)
        return;
    m_isSearchPresented = isPresented;
    if (!isPresented)
        m_viewModel->setSearchText(QString());
    Q_EMIT searchPresentedChanged();
}

void EarthquakeListScreen::appear()
{
    m_viewModel->onAppear(m_container->mainContext());
    m_isActive = true;
}

void EarthquakeListScreen::disappear()
{
    m_viewModel->stopAutoRefresh();
    m_isActive = false;
}

void EarthquakeListScreen::manualRefresh()
{
    m_viewModel->manualRefresh();
}

void EarthquakeListScreen::resetFilters()
{
    m_viewModel->setSelectedFilter(MagnitudeFilter::all);
    m_viewModel->setSelectedDateFilter(DateFilter::all);
}
