// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/Earthquake.h"
#include "Core/Models/ParsedEarthquake.h"
#include "Platform/Support/Published.h"
#include "Platform/Support/Task.h"

#include <QFuture>
#include <QList>

#include <exception>
#include <memory>
#include <optional>
#include <vector>

class EarthquakeDataSource;
class ModelContext;
class NotificationSettings;

/// The one place where the catalogue changes: fetches the source's list, stores what is not yet known, and remembers
/// when that last went well. Holds no events of its own; screens read the store. Nothing cancels a refresh but the end
/// of its repository, which abandons the fetch; whose owner may go before that hands it to retire().
class EarthquakeRepository : public QObject
{
    Q_OBJECT

public:
    /// How long the countdown after a manual refresh takes.
    static constexpr qint64 cooldownSeconds = 60;

    /// Reads and writes in `context`, which must outlive the repository. Without a `dataSource` it makes an
    /// IGNDataSource over the shared session.
    explicit EarthquakeRepository(ModelContext &context, std::unique_ptr<EarthquakeDataSource> dataSource = nullptr,
                                  QObject *parent = nullptr);
    ~EarthquakeRepository() override;

    /// Ends a repository, null or not, at once or right after the refresh under way. Until then it belongs to `keeper`,
    /// which must not outlive what the repository uses by a turn of the event loop.
    static void retire(std::unique_ptr<EarthquakeRepository> repository, QObject *keeper);

    /// A refresh is under way; a second one is then refused.
    bool isLoading() const { return m_isLoading; }
    /// When a refresh last fetched and stored without failure; absent when none ever did. One that finds nothing new
    /// counts as good, though events of an earlier one that failed may still wait to be stored.
    std::optional<Instant> lastUpdated() const { return m_lastUpdated; }
    /// The failure of the last refresh; null while one runs and after a good one.
    std::exception_ptr lastError() const { return m_lastError; }
    /// The countdown after a manual refresh runs.
    bool isCoolingDown() const { return m_isCoolingDown; }
    /// Whole seconds left of the countdown.
    qint64 cooldownRemainingSeconds() const { return m_cooldownRemainingSeconds; }

    /// Fetches, stores, and sets `lastUpdated` or `lastError`; never fails. Ends at once, changing nothing, while
    /// another refresh of this repository runs. `startsCooldown` starts the countdown at the end, also after a failure.
    /// `isLoading` goes false as the very last act. Events that could not be stored stay pending in the context, known
    /// from then on: they raise no alerts, and the next refresh that finds another new event stores them with it.
    QFuture<void> refresh(bool startsCooldown = false);

Q_SIGNALS:
    void isLoadingChanged();
    void lastUpdatedChanged();
    void lastErrorChanged();
    void isCoolingDownChanged();
    void cooldownRemainingSecondsChanged();

private:
    void persist(const QList<ParsedEarthquake> &rows);
    /// Takes what has just been stored through the alert rules to the desktop.
    void fireNotifications(const std::vector<Earthquake> &added);
    /// The stored events of the last 24 hours, newest first; none when the store cannot be read.
    std::vector<Earthquake> fetchRecentEarthquakes() const;
    void startCooldown(qint64 seconds = cooldownSeconds);
    void countDown(Task &task, qint64 left);

    ModelContext &m_context;
    std::unique_ptr<EarthquakeDataSource> m_dataSource;
    NotificationSettings &m_notificationSettings;
    Task::Handle m_cooldownTask;

    Published<bool> m_isLoading{this, &EarthquakeRepository::isLoadingChanged, false};
    Published<std::optional<Instant>> m_lastUpdated{this, &EarthquakeRepository::lastUpdatedChanged};
    Published<std::exception_ptr> m_lastError{this, &EarthquakeRepository::lastErrorChanged};
    Published<bool> m_isCoolingDown{this, &EarthquakeRepository::isCoolingDownChanged, false};
    Published<qint64> m_cooldownRemainingSeconds{this, &EarthquakeRepository::cooldownRemainingSecondsChanged, 0};
    /// Whose end ends the wait for a fetch. The first member to go: a source may give a fetch up in its own destructor.
    QObject m_fetching;
};
