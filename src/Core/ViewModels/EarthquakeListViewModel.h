// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/ViewModels/DateFilter.h"
#include "Core/ViewModels/MagnitudeFilter.h"
#include "Platform/Support/Debounce.h"
#include "Platform/Support/Published.h"
#include "Platform/Support/Task.h"

#include <QFuture>
#include <QObject>

#include <optional>

class EarthquakeRepository;
class ModelContext;

/// The state behind the recent list: filters, search, automatic refresh and the text that tells how old the data is.
/// It never reads the store; its screen applies the filters to the events. Nothing of it is saved.
class EarthquakeListViewModel : public QObject
{
    Q_OBJECT

public:
    using MagnitudeFilter = ::MagnitudeFilter;
    using DateFilter = ::DateFilter;

    /// `repository` must outlive the model.
    explicit EarthquakeListViewModel(EarthquakeRepository &repository, QObject *parent = nullptr);

    MagnitudeFilter selectedFilter() const { return m_selectedFilter; }
    DateFilter selectedDateFilter() const { return m_selectedDateFilter; }
    /// What the search field holds now.
    QString searchText() const { return m_searchText; }
    /// The search text once it has rested for 300 ms; filtering goes by this one.
    QString debouncedSearchText() const { return m_debouncedSearchText; }
    EarthquakeRepository &repository() const { return m_repository; }
    /// How long ago the last good refresh was, reckoned at each call; absent when there never was one.
    std::optional<QString> lastUpdatedSubtitle() const;
    /// Whether a refresh will come by itself.
    bool isAutoRefreshing() const { return m_refreshTask != nullptr; }

    void setSelectedFilter(MagnitudeFilter filter) { m_selectedFilter = filter; }
    void setSelectedDateFilter(DateFilter filter) { m_selectedDateFilter = filter; }
    void setSearchText(const QString &text) { m_searchText = text; }

    /// The screen came on show: refreshes from the event loop, then starts the automatic refresh. The context is not
    /// used.
    void onAppear(ModelContext &context);
    /// Ends the automatic refresh, when the screen goes. A later change of the interval or return to the foreground
    /// starts it again.
    void stopAutoRefresh();
    /// Refreshes now; does nothing while a refresh runs.
    QFuture<void> refresh();
    /// The user's own refresh: does nothing while one runs or the countdown after the last one does, and starts that
    /// countdown.
    QFuture<void> manualRefresh();

Q_SIGNALS:
    void selectedFilterChanged();
    void selectedDateFilterChanged();
    void searchTextChanged();
    void debouncedSearchTextChanged();

private:
    void startAutoRefresh();
    void runAutoRefresh(Task &task, std::chrono::milliseconds interval);
    void returnToForeground(const QString &notification);

    EarthquakeRepository &m_repository;
    Task::Handle m_refreshTask;
    Debounce m_searchDebounce;

    Published<MagnitudeFilter> m_selectedFilter{this, &EarthquakeListViewModel::selectedFilterChanged};
    Published<DateFilter> m_selectedDateFilter{this, &EarthquakeListViewModel::selectedDateFilterChanged};
    Published<QString> m_searchText{this, &EarthquakeListViewModel::searchTextChanged};
    Published<QString> m_debouncedSearchText{this, &EarthquakeListViewModel::debouncedSearchTextChanged};
};
