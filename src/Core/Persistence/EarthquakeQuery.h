// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/Earthquake.h"

#include <QByteArray>
#include <QObject>

#include <optional>
#include <span>
#include <unordered_set>
#include <vector>

class ModelContainer;

/// Every stored event, newest first, kept up to date as contexts save: the list behind the recent list, the map and
/// the statistics. Events of the same date stand with the later row first. What filters look at lies in flat arrays
/// beside the handles, so that a filter over a million events touches no record. Main thread only.
///
/// What the main context holds pending is there too once a save of it has failed, or when it was pending before the
/// query was made. Rows of another process come at the next refresh of a repository whose fetch succeeds; a row that
/// another process has overwritten shows its new values at the next start.
class EarthquakeQuery : public QObject
{
    Q_OBJECT

public:
    /// What one change did. An event whose values were overwritten is removed and inserted.
    struct Change
    {
        /// Indexes before the change, rising.
        std::vector<qsizetype> removed;
        /// Indexes after the change, rising.
        std::vector<qsizetype> inserted;
    };

    /// Reads the whole store. One that cannot be read counts as empty; the next refreshFromStore() tries again.
    explicit EarthquakeQuery(ModelContainer &container);

    qsizetype count() const { return qsizetype(m_earthquakes.size()); }
    bool isEmpty() const { return m_earthquakes.empty(); }
    std::span<const Earthquake> earthquakes() const { return m_earthquakes; }
    const Earthquake &at(qsizetype index) const { return m_earthquakes[size_t(index)]; }

    /// Origin times, parallel to earthquakes(): falling.
    std::span<const Instant> dates() const { return m_dates; }
    /// Magnitude bands, parallel to earthquakes().
    std::span<const MagnitudeCategory::Band> bands() const { return m_bands; }
    /// For each event the number of its place name, an index into foldedLocations().
    std::span<const quint32> locationIndexes() const { return m_locationIndexes; }
    /// The distinct place names, folded for search. Only ever grows.
    const std::vector<QByteArray> &foldedLocations() const { return m_foldedLocations; }

    /// How many events have a date at or after `cutoff`: they stand first.
    qsizetype countSince(Instant cutoff) const;

    /// Picks up what another process has written since; cheap when it has not.
    void refreshFromStore();

Q_SIGNALS:
    /// Rows came or were overwritten; everything above already tells the new state.
    void changed(const EarthquakeQuery::Change &change);

private:
    bool contains(const Earthquake &earthquake) const;
    void showPending();
    void apply(std::vector<Earthquake> inserted, std::vector<Earthquake> replaced);
    std::vector<qsizetype> remove(const std::unordered_set<PersistentIdentifier> &gone);
    std::vector<qsizetype> insert(std::vector<Earthquake> sorted);
    void foldNewLocations();

    ModelContainer &m_container;
    std::vector<Earthquake> m_earthquakes;
    std::vector<Instant> m_dates;
    std::vector<MagnitudeCategory::Band> m_bands;
    std::vector<quint32> m_locationIndexes;
    std::vector<QByteArray> m_foldedLocations;

    /// Of the main connection when the store was last read; absent when it could not be.
    std::optional<int> m_dataVersion;
    /// Up to this row everything is here.
    qint64 m_readThrough = 0;
};
