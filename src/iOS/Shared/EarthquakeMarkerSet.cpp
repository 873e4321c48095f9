// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/EarthquakeMarkerSet.h"

#include <algorithm>

std::optional<Earthquake> EarthquakeMarkerSet::latest() const
{
    return m_earthquakes.empty() ? std::nullopt : std::optional(m_earthquakes.front());
}

void EarthquakeMarkerSet::setEarthquakes(std::vector<Earthquake> earthquakes)
{
    const auto isSame = [](const Earthquake &a, const Earthquake &b) { return a.isSameRecord(b); };
    if (std::equal(m_earthquakes.begin(), m_earthquakes.end(), earthquakes.begin(), earthquakes.end(), isSame))
        return;
    m_earthquakes = std::move(earthquakes);
    Q_EMIT earthquakesChanged();
}

void EarthquakeMarkerSet::setSelected(const std::optional<Earthquake> &selected)
{
    if (m_selected == selected)
        return;
    m_selected = selected;
    Q_EMIT selectedChanged();
}
