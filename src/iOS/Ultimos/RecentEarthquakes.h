// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/MagnitudeCategory.h"
#include "Platform/Support/Instant.h"

#include <QByteArray>

#include <array>
#include <optional>
#include <vector>

class EarthquakeQuery;

/// Which events the recent list shows: those of the last thirty days that pass the filters, in three sections by
/// age. Reckoned over the query's flat arrays; no event is touched and none allocated for.
class RecentEarthquakes
{
public:
    /// What is kept. Absent or empty parts keep everything.
    struct Filter
    {
        std::optional<MagnitudeCategory> category{};
        /// The earliest date.
        std::optional<Instant> cutoff{};
        /// Part of the place name, folded for search.
        QByteArray foldedLocation{};
    };

    /// Where the sections begin, for one moment. An event exactly at a cut-off belongs to the younger section; one
    /// dated in the future to the youngest.
    struct Cutoffs
    {
        explicit Cutoffs(Instant now);

        Instant last24h;
        Instant last7d;
        Instant last30d;
    };

    void evaluate(const EarthquakeQuery &query, const Filter &filter, const Cutoffs &cutoffs);

    bool isEmpty() const { return m_places.empty(); }
    /// Indexes into the query's events, in its order: newest first.
    const std::vector<quint32> &places() const { return m_places; }
    /// How many of them are of the last 24 hours, of the last 7 days before that, of the last 30 days before that.
    const std::array<qsizetype, 3> &sectionCounts() const { return m_sectionCounts; }

private:
    void matchNames(const EarthquakeQuery &query, const QByteArray &foldedLocation);

    std::vector<quint32> m_places;
    std::array<qsizetype, 3> m_sectionCounts{};
    /// For each distinct place name whether it holds m_needle.
    std::vector<bool> m_nameMatches;
    QByteArray m_needle;
};
