// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/Earthquake.h"
#include "Core/ViewModels/EarthquakeListViewModel.h"
#include "Platform/Support/Published.h"

#include <QObject>

#include <optional>

class EarthquakeRepository;

/// The state behind the map: its own two filters, independent of the recent list's, and the event whose callout is
/// open. The screen applies the filters to the events. Nothing of it is saved.
class MapViewModel : public QObject
{
    Q_OBJECT

public:
    /// `repository` must outlive the model.
    explicit MapViewModel(EarthquakeRepository &repository, QObject *parent = nullptr);

    EarthquakeListViewModel::MagnitudeFilter selectedFilter() const { return m_selectedFilter; }
    EarthquakeListViewModel::DateFilter selectedDateFilter() const { return m_selectedDateFilter; }
    /// It stays selected, with its callout open, also when the filters do not let it through.
    const std::optional<Earthquake> &selectedEarthquake() const { return m_selectedEarthquake.value(); }
    EarthquakeRepository &repository() const { return m_repository; }

    void setSelectedFilter(EarthquakeListViewModel::MagnitudeFilter filter) { m_selectedFilter = filter; }
    void setSelectedDateFilter(EarthquakeListViewModel::DateFilter filter) { m_selectedDateFilter = filter; }
    void setSelectedEarthquake(const std::optional<Earthquake> &earthquake) { m_selectedEarthquake = earthquake; }

    /// The map came on show: refreshes once, from the event loop, and without a countdown.
    void onAppear();

Q_SIGNALS:
    void selectedFilterChanged();
    void selectedDateFilterChanged();
    void selectedEarthquakeChanged();

private:
    EarthquakeRepository &m_repository;
    Published<EarthquakeListViewModel::MagnitudeFilter> m_selectedFilter{this, &MapViewModel::selectedFilterChanged};
    Published<EarthquakeListViewModel::DateFilter> m_selectedDateFilter{this, &MapViewModel::selectedDateFilterChanged};
    Published<std::optional<Earthquake>> m_selectedEarthquake{this, &MapViewModel::selectedEarthquakeChanged};
};
