// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/ViewModels/StatsViewModel.h"

#include "Platform/Clock/Clock.h"
#include "Platform/Support/Platform.h"
#include "Platform/Text/NumberFormat.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_map>

namespace {
constexpr double cellDegrees = 0.5;
constexpr size_t shownZones = 5;
constexpr double intermediateFromKm = 30.0;
constexpr double intermediateThroughKm = 70.0;

/// A coordinate on the grid; halves go away from zero.
double snap(double degrees)
{
    return std::round(degrees / cellDegrees) * cellDegrees;
}

struct Cell
{
    double lat = 0;
    double lon = 0;

    bool operator==(const Cell &) const = default;
};

struct CellHash
{
    size_t operator()(const Cell &cell) const
    {
        return std::hash<double>()(cell.lat) * 31 + std::hash<double>()(cell.lon);
    }
};

/// What a cell gathers. Place names are counted by their numbers, so that no event costs an allocation or a comparison
/// of texts.
struct Zone
{
    struct Name
    {
        const Earthquake *bearer = nullptr;
        qint64 count = 0;
    };

    qint64 count = 0;
    double magnitudeSum = 0;
    std::unordered_map<quint32, Name> names;

    void add(const Earthquake &earthquake)
    {
        ++count;
        magnitudeSum += earthquake.magnitude();
        Name &name = names[earthquake.locationIndex()];
        name.bearer = &earthquake;
        ++name.count;
    }

    QString mostFrequentName() const
    {
        QString text;
        qint64 most = 0;
        for (const auto &[index, name] : names) {
            if (name.count < most || (name.count == most && name.bearer->location() >= text))
                continue;
            most = name.count;
            text = name.bearer->location();
        }
        return text;
    }
};

struct CountedZone
{
    const Cell *cell;
    const Zone *zone;
    QString id;
};

/// A rolling window back from the update, and its strongest event.
struct Window
{
    explicit Window(Instant now, int seconds)
        : cutoff(now - std::chrono::seconds(seconds))
    {
    }

    void add(const Earthquake &earthquake)
    {
        if (earthquake.date() < cutoff)
            return;
        ++count;
        if (!peak || earthquake.magnitude() > peak->magnitude())
            peak = &earthquake;
    }

    std::optional<PeakEvent> peakEvent() const { return peak ? std::optional(PeakEvent{*peak}) : std::nullopt; }

    Instant cutoff;
    qint64 count = 0;
    const Earthquake *peak = nullptr;
};
}

/// Everything that one pass over the events gathers.
struct StatsViewModel::Tally
{
    explicit Tally(Instant now)
        : hour(now, 3600)
        , day(now, 86400)
        , week(now, 604800)
        , month(now, 2592000)
    {
    }

    void add(const Earthquake &earthquake)
    {
        for (Window *window : {&hour, &day, &week, &month})
            window->add(earthquake);
        ++categoryCounts[earthquake.magnitudeCategory().band()];
        addDepth(earthquake.depth());
        addToZone(earthquake);
    }

    Window hour;
    Window day;
    Window week;
    Window month;
    std::array<qint64, MagnitudeCategory::allCases.size()> categoryCounts{};
    double depthSum = 0;
    DepthStat depth;
    std::unordered_map<Cell, Zone, CellHash> zones;

private:
    void addDepth(double depthKm)
    {
        depthSum += depthKm;
        ++depth.total;
        if (depthKm < intermediateFromKm)
            ++depth.shallowCount;
        else if (depthKm <= intermediateThroughKm)
            ++depth.intermediateCount;
        else
            ++depth.deepCount;
    }

    void addToZone(const Earthquake &earthquake)
    {
        const Cell cell{snap(earthquake.latitude()), snap(earthquake.longitude())};
        // Neighbours in time are mostly neighbours in space.
        if (!m_lastZone || m_lastCell != cell) {
            m_lastZone = &zones[cell];
            m_lastCell = cell;
        }
        m_lastZone->add(earthquake);
    }

    Cell m_lastCell;
    Zone *m_lastZone = nullptr;
};

StatsViewModel::StatsViewModel(QObject *parent)
    : QObject(parent)
{
}

void StatsViewModel::update(std::span<const Earthquake> earthquakes)
{
    Tally tally(Platform::current().clock.now());
    for (const Earthquake &earthquake : earthquakes)
        tally.add(earthquake);
    computeActivityCounts(tally);
    computePeakEvents(tally);
    computeMagnitudeDistribution(tally);
    computeTopClusters(tally);
    computeDepthAnalysis(tally);
}

void StatsViewModel::computeActivityCounts(const Tally &tally)
{
    m_countLastHour = tally.hour.count;
    m_countLast24h = tally.day.count;
    m_countLast7d = tally.week.count;
    m_countLast30d = tally.month.count;
}

void StatsViewModel::computePeakEvents(const Tally &tally)
{
    m_peakLast24h = tally.day.peakEvent();
    m_peakLast7d = tally.week.peakEvent();
}

void StatsViewModel::computeMagnitudeDistribution(const Tally &tally)
{
    std::vector<MagnitudeStat> stats;
    const qint64 largest = *std::max_element(tally.categoryCounts.begin(), tally.categoryCounts.end());
    if (largest > 0) {
        for (const MagnitudeCategory category : MagnitudeCategory::allCases) {
            const qint64 count = tally.categoryCounts[category.band()];
            stats.push_back({category, count, double(count) / double(largest)});
        }
    }
    m_magnitudeStats = std::move(stats);
}

void StatsViewModel::computeTopClusters(const Tally &tally)
{
    std::vector<CountedZone> zones;
    for (const auto &[cell, zone] : tally.zones)
        zones.push_back({&cell, &zone, shortestText(cell.lat) + u',' + shortestText(cell.lon)});
    const auto shown = zones.begin() + std::ptrdiff_t(std::min(zones.size(), shownZones));
    std::partial_sort(zones.begin(), shown, zones.end(), [](const CountedZone &a, const CountedZone &b) {
        return a.zone->count != b.zone->count ? a.zone->count > b.zone->count : a.id < b.id;
    });

    std::vector<ClusterStat> clusters;
    std::transform(zones.begin(), shown, std::back_inserter(clusters), [](const CountedZone &counted) {
        const Zone &zone = *counted.zone;
        return ClusterStat{counted.id,        zone.mostFrequentName(),
                           zone.count,        zone.magnitudeSum / double(zone.count),
                           counted.cell->lat, counted.cell->lon};
    });
    m_topClusters = std::move(clusters);
}

void StatsViewModel::computeDepthAnalysis(const Tally &tally)
{
    std::optional<DepthStat> stat;
    if (tally.depth.total > 0) {
        stat = tally.depth;
        stat->averageDepth = tally.depthSum / double(stat->total);
    }
    m_depthStat = stat;
}
