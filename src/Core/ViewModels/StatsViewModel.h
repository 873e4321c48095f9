// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/Earthquake.h"
#include "Core/Models/MagnitudeCategory.h"
#include "Platform/Support/Published.h"

#include <QObject>
#include <QString>

#include <optional>
#include <span>
#include <vector>

/// One bar of the distribution over the magnitude categories.
struct MagnitudeStat
{
    MagnitudeCategory category;
    /// Events in this category.
    qint64 count = 0;
    /// `count` over the largest count of any category: the fullest one is 1.0.
    double fraction = 0;

    bool operator==(const MagnitudeStat &) const = default;
};

/// One active zone: a cell of half a degree by half a degree.
struct ClusterStat
{
    /// The two coordinates of the cell as text, latitude first: "28.0,-16.5".
    QString id;
    /// The most frequent place name among the zone's events; of several, the first by code point.
    QString displayName;
    qint64 count = 0;
    /// Arithmetic mean.
    double averageMagnitude = 0;
    /// The cell's latitude in degrees.
    double latKey = 0;
    /// The cell's longitude in degrees.
    double lonKey = 0;

    bool operator==(const ClusterStat &) const = default;
};

/// How deep the events lie.
struct DepthStat
{
    /// Arithmetic mean, in kilometres.
    double averageDepth = 0;
    /// Above 30 km.
    qint64 shallowCount = 0;
    /// From 30 km to 70 km, both included.
    qint64 intermediateCount = 0;
    /// Below 70 km.
    qint64 deepCount = 0;
    qint64 total = 0;

    /// Shares of the whole; 0.0 without events.
    double shallowFraction() const { return fraction(shallowCount); }
    double intermediateFraction() const { return fraction(intermediateCount); }
    double deepFraction() const { return fraction(deepCount); }

    bool operator==(const DepthStat &) const = default;

private:
    double fraction(qint64 count) const { return total > 0 ? double(count) / double(total) : 0.0; }
};

/// The strongest event of a period.
struct PeakEvent
{
    Earthquake earthquake;
};

/// The figures of the statistics screen, computed from the whole list of events at each update and at no other time:
/// the rolling windows stand still until the next one.
class StatsViewModel : public QObject
{
    Q_OBJECT

public:
    explicit StatsViewModel(QObject *parent = nullptr);

    /// Replaces all nine figures. `earthquakes` is every event, newest first.
    void update(std::span<const Earthquake> earthquakes);

    /// Events of the last hour, day, seven days and thirty days, in seconds back from the update; what is dated later
    /// than the update counts in all four.
    qint64 countLastHour() const { return m_countLastHour; }
    qint64 countLast24h() const { return m_countLast24h; }
    qint64 countLast7d() const { return m_countLast7d; }
    qint64 countLast30d() const { return m_countLast30d; }
    /// The strongest event, of equals the newest; absent when the period has none.
    const std::optional<PeakEvent> &peakLast24h() const { return m_peakLast24h; }
    const std::optional<PeakEvent> &peakLast7d() const { return m_peakLast7d; }
    /// All five categories from the weakest up; empty without events.
    const std::vector<MagnitudeStat> &magnitudeStats() const { return m_magnitudeStats; }
    /// The five zones with the most events, the fullest first; of equals the smaller id first.
    const std::vector<ClusterStat> &topClusters() const { return m_topClusters; }
    /// Absent without events.
    const std::optional<DepthStat> &depthStat() const { return m_depthStat; }

Q_SIGNALS:
    void countLastHourChanged();
    void countLast24hChanged();
    void countLast7dChanged();
    void countLast30dChanged();
    void peakLast24hChanged();
    void peakLast7dChanged();
    void magnitudeStatsChanged();
    void topClustersChanged();
    void depthStatChanged();

private:
    struct Tally;

    void computeActivityCounts(const Tally &tally);
    void computePeakEvents(const Tally &tally);
    void computeMagnitudeDistribution(const Tally &tally);
    void computeTopClusters(const Tally &tally);
    void computeDepthAnalysis(const Tally &tally);

    Published<qint64> m_countLastHour{this, &StatsViewModel::countLastHourChanged, 0};
    Published<qint64> m_countLast24h{this, &StatsViewModel::countLast24hChanged, 0};
    Published<qint64> m_countLast7d{this, &StatsViewModel::countLast7dChanged, 0};
    Published<qint64> m_countLast30d{this, &StatsViewModel::countLast30dChanged, 0};
    Published<std::optional<PeakEvent>> m_peakLast24h{this, &StatsViewModel::peakLast24hChanged};
    Published<std::optional<PeakEvent>> m_peakLast7d{this, &StatsViewModel::peakLast7dChanged};
    Published<std::vector<MagnitudeStat>> m_magnitudeStats{this, &StatsViewModel::magnitudeStatsChanged};
    Published<std::vector<ClusterStat>> m_topClusters{this, &StatsViewModel::topClustersChanged};
    Published<std::optional<DepthStat>> m_depthStat{this, &StatsViewModel::depthStatChanged};
};
