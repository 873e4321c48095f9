// SPDX-License-Identifier: GPL-3.0-or-later
#include "macOS/MacBackgroundRefreshManager.h"

#include "Core/DataSources/IGNDataSource.h"
#include "Core/Notifications/NotificationSettings.h"
#include "Core/Persistence/ModelContext.h"
#include "Core/Persistence/PersistenceController.h"
#include "Core/Repositories/EarthquakeRepository.h"
#include "Platform/BackgroundActivity/BackgroundActivityScheduler.h"
#include "Platform/Support/Async.h"
#include "Platform/Support/Platform.h"

#include <QObject>

#include <memory>

namespace {
const QString activityIdentifier = QStringLiteral("orvalia.bgrefresh");
/// Allowed deviation, as a share of the interval.
constexpr double tolerance = 0.1;

/// What one run works with: it lets go of everything when its refresh ends.
class Run : public QObject
{
public:
    explicit Run(QObject *parent)
        : QObject(parent)
        , m_context(PersistenceController::shared().container())
        , m_repository(m_context, std::make_unique<IGNDataSource>())
    {
        // The outcome stays with the repository. Deleting it inside its own last act would be too early.
        whenFinished(m_repository.refresh(), this, [this](const QFuture<void> &) { deleteLater(); });
    }

private:
    ModelContext m_context;
    EarthquakeRepository m_repository;
};

/// The activity in force and the runs that it has begun.
struct Activity
{
    std::unique_ptr<BackgroundActivityScheduler> scheduler;
    QObject runs;

    static Activity &shared()
    {
        // The runs use the store, so the store comes first and goes last.
        PersistenceController::shared();
        return Platform::shared<Activity>([] { return new Activity; });
    }

    /// Begins a run from the event loop, behind whatever called. Without a store it ends before it has begun; the
    /// next one tries again.
    void beginRun()
    {
        const auto begin = [this] {
            try {
                new Run(&runs);
            } catch (const StoreError &) {
            }
        };
        QMetaObject::invokeMethod(&runs, begin, Qt::QueuedConnection);
    }
};
}

void MacBackgroundRefreshManager::scheduleRefresh(double interval)
{
    Activity &activity = Activity::shared();
    if (activity.scheduler)
        activity.scheduler->invalidate();
    auto scheduler = Platform::current().makeBackgroundActivityScheduler(activityIdentifier);
    scheduler->setRepeats(true);
    scheduler->setInterval(interval);
    scheduler->setTolerance(interval * tolerance);
    scheduler->setQualityOfService(BackgroundActivityScheduler::QualityOfService::utility);
    scheduler->scheduleWithBlock([&activity](const BackgroundActivityScheduler::CompletionHandler &completed) {
        activity.beginRun();
        // Told early on purpose: the system need not wait for the network.
        completed(BackgroundActivityScheduler::Result::finished);
    });
    activity.scheduler = std::move(scheduler);
}

void MacBackgroundRefreshManager::cancel()
{
    Activity &activity = Activity::shared();
    if (activity.scheduler)
        activity.scheduler->invalidate();
    activity.scheduler = nullptr;
}

void MacBackgroundRefreshManager::applySettings()
{
    if (const auto seconds = NotificationSettings::shared().refreshInterval().seconds())
        scheduleRefresh(*seconds);
    else
        cancel();
}
