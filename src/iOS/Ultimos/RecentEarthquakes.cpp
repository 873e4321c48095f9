// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Ultimos/RecentEarthquakes.h"

#include "Core/Persistence/EarthquakeQuery.h"
#include "Platform/Text/TextSearch.h"

#include <algorithm>

using namespace std::chrono_literals;

RecentEarthquakes::Cutoffs::Cutoffs(Instant now)
    : last24h(now - 86400s)
    , last7d(now - 604800s)
    , last30d(now - 2592000s)
{
}

void RecentEarthquakes::evaluate(const EarthquakeQuery &query, const Filter &filter, const Cutoffs &cutoffs)
{
    // Newest first, so that everything since a moment is a run from the beginning.
    const qsizetype passesDate = filter.cutoff ? query.countSince(*filter.cutoff) : query.count();
    const std::array<qsizetype, 3> ends{std::min(passesDate, query.countSince(cutoffs.last24h)),
                                        std::min(passesDate, query.countSince(cutoffs.last7d)),
                                        std::min(passesDate, query.countSince(cutoffs.last30d))};
    const bool searches = !filter.foldedLocation.isEmpty();
    if (searches)
        matchNames(query, filter.foldedLocation);
    const auto passes = [&](size_t place) {
        return (!filter.category || query.bands()[place] == filter.category->band())
            && (!searches || m_nameMatches[query.locationIndexes()[place]]);
    };

    m_places.clear();
    qsizetype place = 0;
    for (size_t section = 0; section < ends.size(); ++section) {
        const size_t before = m_places.size();
        for (; place < ends[section]; ++place)
            if (passes(size_t(place)))
                m_places.push_back(quint32(place));
        m_sectionCounts[section] = qsizetype(m_places.size() - before);
    }
}

/// A few thousand distinct names serve every event, so they are searched once, and only those that are new.
void RecentEarthquakes::matchNames(const EarthquakeQuery &query, const QByteArray &foldedLocation)
{
    const std::vector<QByteArray> &names = query.foldedLocations();
    if (foldedLocation != m_needle) {
        m_needle = foldedLocation;
        m_nameMatches.clear();
    }
    for (size_t name = m_nameMatches.size(); name < names.size(); ++name)
        m_nameMatches.push_back(foldedContains(names[name], foldedLocation));
}
