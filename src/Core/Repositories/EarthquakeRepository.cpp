// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Repositories/EarthquakeRepository.h"

#include "Core/DataSources/IGNDataSource.h"
#include "Core/Location/LocationManager.h"
#include "Core/Notifications/NotificationFilter.h"
#include "Core/Notifications/NotificationManager.h"
#include "Core/Notifications/NotificationSettings.h"
#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"
#include "Platform/Support/Async.h"
#include "Platform/Support/Platform.h"
#include "Platform/UserDefaults/UserDefaults.h"

#include <QPromise>

#include <utility>

using namespace std::chrono_literals;

namespace {
const QString lastUpdatedKey = QStringLiteral("lastUpdatedEarthquakes");
/// As far as the longest swarm window reaches back.
constexpr double recentSeconds = 86400.0;

Earthquake earthquake(const ParsedEarthquake &row)
{
    return {row.eventID,   row.date,          row.latitude,     row.longitude, row.depth,
            row.magnitude, row.magnitudeType, row.maxIntensity, row.location};
}

/// Makes a source that throws at once fail as one that fails later.
QFuture<QList<ParsedEarthquake>> fetched(EarthquakeDataSource &source)
{
    try {
        return source.fetchEarthquakes();
    } catch (...) {
        return QtFuture::makeExceptionalFuture<QList<ParsedEarthquake>>(std::current_exception());
    }
}

/// A store that cannot say what it holds counts as empty: its own uniqueness keeps out a second row.
std::unordered_set<QString> knownEventIDs(const ModelContext &context, const QList<ParsedEarthquake> &rows)
{
    try {
        return context.knownEventIDs(rows);
    } catch (const StoreError &) {
        return {};
    }
}
}

EarthquakeRepository::EarthquakeRepository(ModelContext &context, std::unique_ptr<EarthquakeDataSource> dataSource,
                                           QObject *parent)
    : QObject(parent)
    , m_context(context)
    , m_dataSource(dataSource ? std::move(dataSource) : std::make_unique<IGNDataSource>())
    , m_notificationSettings(NotificationSettings::shared())
    , m_lastUpdated(this, &EarthquakeRepository::lastUpdatedChanged, UserDefaults::standard().dateValue(lastUpdatedKey))
{
}

EarthquakeRepository::~EarthquakeRepository() = default;

void EarthquakeRepository::retire(std::unique_ptr<EarthquakeRepository> repository, QObject *keeper)
{
    if (!repository || !repository->isLoading())
        return;
    connect(repository.get(), &EarthquakeRepository::isLoadingChanged, repository.get(), &QObject::deleteLater);
    repository.release()->setParent(keeper);
}

QFuture<void> EarthquakeRepository::refresh(bool startsCooldown)
{
    if (m_isLoading)
        return QtFuture::makeReadyFuture();
    m_isLoading = true;
    m_lastError = nullptr;
    QPromise<void> ended;
    ended.start();
    QFuture<void> result = ended.future();
    whenFinished(
        fetched(*m_dataSource), &m_fetching,
        [this, startsCooldown, ended = std::move(ended)](const QFuture<QList<ParsedEarthquake>> &rows) mutable {
            try {
                persist(rows.result());
                m_lastUpdated = Platform::current().clock.now();
                UserDefaults::standard().setDate(lastUpdatedKey, *m_lastUpdated.value());
            } catch (...) {
                m_lastError = std::current_exception();
            }
            if (startsCooldown)
                startCooldown();
            m_isLoading = false;
            // An observer may have deleted the repository by now: only the capture is left.
            ended.finish();
        });
    return result;
}

void EarthquakeRepository::persist(const QList<ParsedEarthquake> &rows)
{
    m_context.container().refreshFromStore();
    const std::unordered_set<QString> known = knownEventIDs(m_context, rows);
    std::vector<Earthquake> added;
    for (const ParsedEarthquake &row : rows) {
        if (known.contains(row.eventID))
            continue;
        added.push_back(earthquake(row));
        m_context.insert(added.back());
    }
    if (added.empty())
        return;
    m_context.save();
    fireNotifications(added);
}

void EarthquakeRepository::fireNotifications(const std::vector<Earthquake> &added)
{
    const std::vector<Earthquake> recent = fetchRecentEarthquakes();
    const NotificationFilter filter(m_notificationSettings, LocationManager::shared().userLocation());
    for (const EarthquakeNotificationEvent &event : filter.evaluate(added, recent))
        NotificationManager::shared().send(event);
}

std::vector<Earthquake> EarthquakeRepository::fetchRecentEarthquakes() const
{
    const Instant cutoff = moved(Platform::current().clock.now(), -recentSeconds);
    try {
        return m_context.fetch({.dates = {.from = cutoff}, .sort = FetchDescriptor::Sort::dateReverse});
    } catch (const StoreError &) {
        return {};
    }
}

void EarthquakeRepository::startCooldown(qint64 seconds)
{
    if (m_cooldownTask)
        m_cooldownTask->cancel();
    m_cooldownRemainingSeconds = seconds;
    m_isCoolingDown = true;
    m_cooldownTask =
        Task::start(Platform::current().clock, this, [this, seconds](Task &task) { countDown(task, seconds); });
}

void EarthquakeRepository::countDown(Task &task, qint64 left)
{
    if (left > 0 && !task.isCancelled()) {
        task.sleep(1s, [this, left](Task &woken) {
            if (!woken.isCancelled())
                m_cooldownRemainingSeconds = left - 1;
            countDown(woken, left - 1);
        });
        return;
    }
    m_isCoolingDown = false;
    m_cooldownRemainingSeconds = 0;
}
