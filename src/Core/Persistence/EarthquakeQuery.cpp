// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/EarthquakeQuery.h"

#include "Core/Models/InternedTexts.h"
#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"
#include "Platform/Text/TextSearch.h"

#include <algorithm>
#include <utility>

namespace {
/// Rises with the row. Events without one come later than all stored ones, and of two such the later made is lower.
quint64 rowOrder(PersistentIdentifier id)
{
    return id >= 0 ? quint64(id) : (quint64(1) << 63) + quint64(-id);
}

bool isNewer(const Earthquake &a, const Earthquake &b)
{
    return a.date() != b.date() ? a.date() > b.date() : rowOrder(a.id()) > rowOrder(b.id());
}

/// By keys of their own: going through the handles, a sort of many events would wait for memory most of the time.
void sortNewestFirst(std::vector<Earthquake> &earthquakes)
{
    struct Key
    {
        Instant date;
        quint64 row;
        size_t index;
    };
    std::vector<Key> keys;
    keys.reserve(earthquakes.size());
    for (const Earthquake &earthquake : earthquakes)
        keys.push_back({earthquake.date(), rowOrder(earthquake.id()), keys.size()});
    std::sort(keys.begin(), keys.end(),
              [](const Key &a, const Key &b) { return a.date != b.date ? a.date > b.date : a.row > b.row; });
    std::vector<Earthquake> sorted;
    sorted.reserve(keys.size());
    for (const Key &key : keys)
        sorted.push_back(std::move(earthquakes[key.index]));
    earthquakes = std::move(sorted);
}

/// Puts `values` into `array` so that each lands at its index of `indexes`, which rise; whole stretches between two
/// of them move at once.
template<class T>
void insertAt(std::vector<T> &array, const std::vector<qsizetype> &indexes, std::vector<T> values)
{
    const size_t oldSize = array.size();
    if (array.capacity() < oldSize + values.size())
        array.reserve(oldSize + oldSize / 64 + values.size() + 1024);
    array.insert(array.end(), values.begin(), values.end());
    auto stretchEnd = array.begin() + qsizetype(oldSize);
    for (size_t left = values.size(); left > 0; --left) {
        const auto stretchBegin = array.begin() + indexes[left - 1] - qsizetype(left - 1);
        std::move_backward(stretchBegin, stretchEnd, stretchEnd + qsizetype(left));
        array[size_t(indexes[left - 1])] = std::move(values[left - 1]);
        stretchEnd = stretchBegin;
    }
}

/// Takes the elements at `indexes`, which rise, out of `array`.
template<class T>
void removeAt(std::vector<T> &array, const std::vector<qsizetype> &indexes)
{
    if (indexes.empty())
        return;
    auto free = array.begin() + indexes.front();
    for (size_t i = 0; i < indexes.size(); ++i) {
        const auto stretchBegin = array.begin() + indexes[i] + 1;
        const auto stretchEnd = i + 1 < indexes.size() ? array.begin() + indexes[i + 1] : array.end();
        free = std::move(stretchBegin, stretchEnd, free);
    }
    array.erase(free, array.end());
}

template<class T, class Get>
std::vector<T> collected(const std::vector<Earthquake> &earthquakes, Get get)
{
    std::vector<T> values;
    values.reserve(earthquakes.size());
    for (const Earthquake &earthquake : earthquakes)
        values.push_back(get(earthquake));
    return values;
}
}

EarthquakeQuery::EarthquakeQuery(ModelContainer &container)
    : m_container(container)
{
    connect(&container, &ModelContainer::didSave, this, &EarthquakeQuery::apply);
    connect(&container, &ModelContainer::didFailToSave, this, &EarthquakeQuery::showPending);
    refreshFromStore();
    showPending();
}

qsizetype EarthquakeQuery::countSince(Instant cutoff) const
{
    const auto older =
        std::partition_point(m_dates.begin(), m_dates.end(), [=](Instant date) { return date >= cutoff; });
    return older - m_dates.begin();
}

void EarthquakeQuery::refreshFromStore()
{
    try {
        const ModelContext &context = m_container.mainContext();
        const int version = context.dataVersion();
        if (m_dataVersion == version)
            return;
        // Before the rows: one that another process adds in between is read twice rather than never.
        const qint64 lastRow = context.lastRow();
        std::vector<Earthquake> rows = context.fetchRowsAfter(m_readThrough);
        m_readThrough = lastRow;
        m_dataVersion = version;
        std::erase_if(rows, [this](const Earthquake &row) { return contains(row); });
        // Among the rows may be some that are here with values which another process has since overwritten.
        if (isEmpty())
            apply(std::move(rows), {});
        else
            apply({}, std::move(rows));
    } catch (const StoreError &) {
        m_dataVersion.reset();
    }
}

bool EarthquakeQuery::contains(const Earthquake &earthquake) const
{
    return std::binary_search(m_earthquakes.begin(), m_earthquakes.end(), earthquake, isNewer);
}

void EarthquakeQuery::showPending()
{
    std::vector<Earthquake> pending = m_container.mainContext().insertedEarthquakes();
    std::erase_if(pending, [this](const Earthquake &row) { return contains(row); });
    apply(std::move(pending), {});
}

void EarthquakeQuery::apply(std::vector<Earthquake> inserted, std::vector<Earthquake> replaced)
{
    std::unordered_set<PersistentIdentifier> gone;
    for (const Earthquake &earthquake : replaced)
        gone.insert(earthquake.id());
    for (const Earthquake &earthquake : inserted)
        if (earthquake.id() < 0)
            gone.insert(earthquake.id());
    inserted.insert(inserted.end(), replaced.begin(), replaced.end());
    if (inserted.empty())
        return;
    sortNewestFirst(inserted);
    const Change change{.removed = remove(gone), .inserted = insert(std::move(inserted))};
    Q_EMIT changed(change);
}

std::vector<qsizetype> EarthquakeQuery::remove(const std::unordered_set<PersistentIdentifier> &gone)
{
    std::vector<qsizetype> indexes;
    if (gone.empty())
        return indexes;
    for (qsizetype i = 0; i < count(); ++i)
        if (gone.contains(at(i).id()))
            indexes.push_back(i);
    removeAt(m_earthquakes, indexes);
    removeAt(m_dates, indexes);
    removeAt(m_bands, indexes);
    removeAt(m_locationIndexes, indexes);
    return indexes;
}

std::vector<qsizetype> EarthquakeQuery::insert(std::vector<Earthquake> sorted)
{
    std::vector<qsizetype> indexes;
    indexes.reserve(sorted.size());
    for (const Earthquake &earthquake : sorted) {
        const auto place = std::lower_bound(m_earthquakes.begin(), m_earthquakes.end(), earthquake, isNewer);
        indexes.push_back(place - m_earthquakes.begin() + qsizetype(indexes.size()));
    }
    insertAt(m_dates, indexes, collected<Instant>(sorted, [](const Earthquake &e) { return e.date(); }));
    insertAt(m_bands, indexes, collected<MagnitudeCategory::Band>(sorted, [](const Earthquake &e) {
                 return e.magnitudeCategory().band();
             }));
    insertAt(m_locationIndexes, indexes,
             collected<quint32>(sorted, [](const Earthquake &e) { return e.locationIndex(); }));
    insertAt(m_earthquakes, indexes, std::move(sorted));
    foldNewLocations();
    return indexes;
}

void EarthquakeQuery::foldNewLocations()
{
    const InternedTexts &names = InternedTexts::placeNames();
    for (quint32 index = quint32(m_foldedLocations.size()); index < names.count(); ++index)
        m_foldedLocations.push_back(foldedForSearch(names.text(index)));
}
