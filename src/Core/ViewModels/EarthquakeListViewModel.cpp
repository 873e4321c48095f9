// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/ViewModels/EarthquakeListViewModel.h"

#include "Core/Notifications/NotificationSettings.h"
#include "Core/Repositories/EarthquakeRepository.h"
#include "Platform/NotificationCenter/NotificationCenter.h"
#include "Platform/Support/Async.h"
#include "Platform/Support/Platform.h"
#include "Platform/Text/DateFormatter.h"
#include "Platform/Text/Localization.h"

using namespace std::chrono_literals;

namespace {
constexpr auto searchRest = 300ms;

QString ageText(const char *key, const QString &defaultText, double elapsed, double unitSeconds)
{
    return formatted(localized(key, defaultText), {qint64(elapsed / unitSeconds)});
}
}

EarthquakeListViewModel::EarthquakeListViewModel(EarthquakeRepository &repository, QObject *parent)
    : QObject(parent)
    , m_repository(repository)
    , m_searchDebounce(Platform::current().clock, searchRest,
                       [this](const QString &text) { m_debouncedSearchText = text; })
{
    connect(this, &EarthquakeListViewModel::searchTextChanged, this, [this] { m_searchDebounce.push(m_searchText); });
    m_searchDebounce.push(m_searchText);
    connect(&NotificationSettings::shared(), &NotificationSettings::refreshIntervalChanged, this,
            &EarthquakeListViewModel::startAutoRefresh, Qt::QueuedConnection);
    connect(&NotificationCenter::defaultCenter(), &NotificationCenter::posted, this,
            &EarthquakeListViewModel::returnToForeground, Qt::QueuedConnection);
}

std::optional<QString> EarthquakeListViewModel::lastUpdatedSubtitle() const
{
    const std::optional<Instant> lastUpdated = m_repository.lastUpdated();
    if (!lastUpdated)
        return std::nullopt;
    const double elapsed = secondsBetween(*lastUpdated, Platform::current().clock.now());
    if (elapsed < 60)
        return localized("lastupdated.now", QStringLiteral("updated just now"));
    if (elapsed < 3600)
        return ageText("lastupdated.minutes", QStringLiteral("updated %lld min ago"), elapsed, 60);
    if (elapsed < 86400)
        return ageText("lastupdated.hours", QStringLiteral("updated %lld h ago"), elapsed, 3600);
    const DateFormatter dates(DateFormatter::Form::pattern, QStringLiteral("dd MMM yyyy"));
    return formatted(localized("lastupdated.days", QStringLiteral("updated %lld day(s) ago (%@)")),
                     {qint64(elapsed / 86400), dates.string(*lastUpdated)});
}

void EarthquakeListViewModel::onAppear(ModelContext &)
{
    // Begun even if the screen has gone by then: what a refresh stores is for every screen.
    Task::start(Platform::current().clock, &m_repository, [&repository = m_repository, self = QPointer(this)](Task &) {
        const QFuture<void> refreshed = repository.refresh();
        whenFinished(refreshed, self.data(), [self](const QFuture<void> &) { self->startAutoRefresh(); });
    });
}

void EarthquakeListViewModel::stopAutoRefresh()
{
    if (m_refreshTask)
        m_refreshTask->cancel();
    m_refreshTask = nullptr;
}

void EarthquakeListViewModel::startAutoRefresh()
{
    stopAutoRefresh();
    const std::optional<double> seconds = NotificationSettings::shared().refreshInterval().seconds();
    if (!seconds)
        return;
    const auto interval = std::chrono::round<std::chrono::milliseconds>(Seconds(*seconds));
    m_refreshTask =
        Task::start(Platform::current().clock, this, [this, interval](Task &task) { runAutoRefresh(task, interval); });
}

/// Sleeps first, so that the period is the interval and the time that a refresh takes.
void EarthquakeListViewModel::runAutoRefresh(Task &task, std::chrono::milliseconds interval)
{
    if (task.isCancelled())
        return;
    task.sleep(interval, [this, interval](Task &awake) {
        if (awake.isCancelled())
            return;
        whenFinished(m_repository.refresh(), this,
                     [this, interval, handle = awake.shared_from_this()](const QFuture<void> &) {
                         runAutoRefresh(*handle, interval);
                     });
    });
}

QFuture<void> EarthquakeListViewModel::refresh()
{
    return m_repository.refresh();
}

QFuture<void> EarthquakeListViewModel::manualRefresh()
{
    if (m_repository.isCoolingDown() || m_repository.isLoading())
        return QtFuture::makeReadyFuture();
    return m_repository.refresh(true);
}

void EarthquakeListViewModel::returnToForeground(const QString &notification)
{
    if (notification != NotificationName::appDidBecomeActive)
        return;
    Task::start(Platform::current().clock, this, [this](Task &) { refresh(); });
    startAutoRefresh();
}
