// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/Earthquake.h"
#include "Core/Models/ParsedEarthquake.h"
#include "Core/Persistence/FetchDescriptor.h"

#include <QList>
#include <QString>

#include <memory>
#include <unordered_set>
#include <vector>

class ModelContainer;

/// One connection to the store. Inserted events stay pending, visible to this context's own fetches and counts, until
/// save() writes them all in one transaction. Main thread only.
class ModelContext
{
public:
    explicit ModelContext(ModelContainer &container);
    ~ModelContext();
    Q_DISABLE_COPY_MOVE(ModelContext)

    ModelContainer &container() const;

    /// The events that match, pending ones included. Throws StoreError.
    std::vector<Earthquake> fetch(const FetchDescriptor &descriptor) const;
    /// How many match, whatever the sort, limit and offset. Throws StoreError.
    qint64 fetchCount(const FetchDescriptor &descriptor) const;
    /// The date of the newest event of each year of the user's calendar, and perhaps of others, newest first. Throws
    /// StoreError.
    std::vector<Instant> newestDateOfEachYear() const;
    /// Those event numbers of `rows` that are stored or pending. Costs the same whatever the store holds. Throws
    /// StoreError.
    std::unordered_set<QString> knownEventIDs(const QList<ParsedEarthquake> &rows) const;

    /// The stored rows above `row`, oldest row first; 0 stands below all rows. Throws StoreError.
    std::vector<Earthquake> fetchRowsAfter(qint64 row) const;
    /// The number of the last stored row, 0 in an empty store. Throws StoreError.
    qint64 lastRow() const;
    /// A number that moves whenever another connection has written. Throws StoreError.
    int dataVersion() const;

    bool hasChanges() const;
    /// What is pending, in the order of insertion.
    const std::vector<Earthquake> &insertedEarthquakes() const;

    /// Takes an event in; save() writes it.
    void insert(const Earthquake &earthquake);

    /// Writes what is pending: an event number already stored keeps its row and takes the new values, as does the
    /// second of two with the same number. From then on the events have the identity of their rows. Throws
    /// StoreError; then nothing is written and everything stays pending for the next save.
    void save();

private:
    struct Private;
    std::unique_ptr<Private> d;
};
