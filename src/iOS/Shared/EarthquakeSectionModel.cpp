// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/EarthquakeSectionModel.h"

#include "Platform/Text/Localization.h"
#include "Platform/Text/NumberFormat.h"
#include "Platform/Text/OneLine.h"

#include <algorithm>
#include <optional>

namespace {
/// Beyond this many separate edits one edit over all of them is cheaper, for this model and for the view alike.
constexpr size_t maximumEdits = 64;
/// How far a row is looked for among rows of the same date. One not found is removed and comes in again.
constexpr qsizetype maximumLookAhead = 64;
/// Longest place name that is read out, in characters. Real ones have up to 40.
constexpr qsizetype maximumSpokenName = 200;
}

/// The list that is to be shown, as one array.
class EarthquakeSectionModel::Shown
{
public:
    /// Rows of one section: its number, and the row behind its last.
    struct Run
    {
        quint32 section;
        qsizetype end;
    };

    Shown(std::span<const Earthquake> events, std::span<const quint32> places, std::vector<Run> runs)
        : m_events(events)
        , m_places(places)
        , m_runs(std::move(runs))
    {
    }

    qsizetype count() const { return qsizetype(m_places.size()); }
    const Earthquake &at(qsizetype row) const { return m_events[m_places[size_t(row)]]; }
    quint32 sectionAt(qsizetype row) const { return std::ranges::upper_bound(m_runs, row, {}, &Run::end)->section; }

private:
    std::span<const Earthquake> m_events;
    std::span<const quint32> m_places;
    std::vector<Run> m_runs;
};

EarthquakeSectionModel::EarthquakeSectionModel(QObject *parent)
    : QAbstractListModel(parent)
    , m_dates(DateFormatter::Form::skeleton, QStringLiteral("dMMyyHHmm"))
{
}

int EarthquakeSectionModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant EarthquakeSectionModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row &row = m_rows[size_t(index.row())];
    switch (role) {
    case magnitudeRole:
        return row.earthquake.magnitude();
    case locationRole:
        return row.earthquake.location();
    case dateTextRole:
        return m_dates.string(row.earthquake.date());
    case depthTextRole:
        return kilometersText(row.earthquake.depth());
    case sectionRole:
        return m_sectionIds.at(row.section);
    case sentenceRole:
        return sentence(row.earthquake);
    default:
        return {};
    }
}

QHash<int, QByteArray> EarthquakeSectionModel::roleNames() const
{
    return {{magnitudeRole, "magnitude"}, {locationRole, "location"}, {dateTextRole, "dateText"},
            {depthTextRole, "depthText"}, {sectionRole, "section"},   {sentenceRole, "sentence"}};
}

qsizetype EarthquakeSectionModel::rowOf(PersistentIdentifier id) const
{
    const auto found = std::ranges::find(m_rows, id, [](const Row &row) { return row.earthquake.id(); });
    return found == m_rows.end() ? -1 : found - m_rows.begin();
}

void EarthquakeSectionModel::show(std::span<const Earthquake> events, std::span<const quint32> places,
                                  const std::vector<Section> &sections)
{
    std::vector<Shown::Run> runs;
    qsizetype end = 0;
    for (const Section &section : sections) {
        end += section.count;
        runs.push_back({numberOfSection(section.id), end});
    }
    Q_ASSERT(end == qsizetype(places.size()));
    const Shown shown(events, places, std::move(runs));
    const int chosenRow = m_currentRow;
    const auto chosen = chosenRow >= 0 ? std::optional(at(chosenRow).id()) : std::nullopt;
    const std::vector<Edit> edits = editsTowards(shown);
    apply(edits, shown);
    replaceChangedRows(shown);
    if (chosen && !edits.empty())
        chooseAgain(chosenRow, *chosen);
}

void EarthquakeSectionModel::setCurrentRow(int row)
{
    const int existing = std::clamp(row, -1, rowCount() - 1);
    if (existing == m_currentRow)
        return;
    m_currentRow = existing;
    Q_EMIT currentRowChanged();
}

/// Tells the choice also where it stays the same: a view whose current row goes away chooses another by itself, even
/// when the row comes back in the same breath.
void EarthquakeSectionModel::chooseAgain(int row, PersistentIdentifier id)
{
    // An event may stand twice where pages of a growing store meet.
    const bool isInPlace = row < rowCount() && at(row).id() == id;
    const int found = isInPlace ? row : int(rowOf(id));
    m_currentRow = found >= 0 ? found : std::min(row, rowCount() - 1);
    Q_EMIT currentRowChanged();
}

/// Both lists are newest first, so that one walk over them side by side finds what came and what went.
std::vector<EarthquakeSectionModel::Edit> EarthquakeSectionModel::editsTowards(const Shown &shown) const
{
    std::vector<Edit> edits;
    qsizetype oldRow = 0;
    qsizetype newRow = 0;
    const auto takes = [&](qsizetype removed, qsizetype inserted) {
        if (edits.empty() || edits.back().oldEnd != oldRow || edits.back().newEnd != newRow)
            edits.push_back({oldRow, oldRow, newRow, newRow});
        oldRow = edits.back().oldEnd += removed;
        newRow = edits.back().newEnd += inserted;
    };
    const auto comesFirst = [&] {
        const Earthquake &before = at(oldRow);
        if (shown.at(newRow).date() != before.date())
            return shown.at(newRow).date() > before.date();
        const qsizetype limit = std::min(shown.count(), newRow + maximumLookAhead);
        for (qsizetype row = newRow + 1; row < limit && shown.at(row).date() == before.date(); ++row)
            if (shown.at(row) == before)
                return true;
        return false;
    };
    const qsizetype oldCount = qsizetype(m_rows.size());
    while (oldRow < oldCount && newRow < shown.count()) {
        if (at(oldRow) == shown.at(newRow)) {
            ++oldRow;
            ++newRow;
        } else if (comesFirst()) {
            takes(0, 1);
        } else {
            takes(1, 0);
        }
    }
    if (oldRow < oldCount || newRow < shown.count())
        takes(oldCount - oldRow, shown.count() - newRow);
    if (edits.size() > maximumEdits)
        edits = {{edits.front().oldBegin, edits.back().oldEnd, edits.front().newBegin, edits.back().newEnd}};
    return edits;
}

/// Removes from the end and inserts from the beginning, so that the rows of the edits hold as they stand.
void EarthquakeSectionModel::apply(const std::vector<Edit> &edits, const Shown &shown)
{
    for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit) {
        if (edit->oldBegin == edit->oldEnd)
            continue;
        beginRemoveRows({}, int(edit->oldBegin), int(edit->oldEnd) - 1);
        m_rows.erase(m_rows.begin() + edit->oldBegin, m_rows.begin() + edit->oldEnd);
        endRemoveRows();
    }
    for (const Edit &edit : edits) {
        if (edit.newBegin == edit.newEnd)
            continue;
        std::vector<Row> rows;
        rows.reserve(size_t(edit.newEnd - edit.newBegin));
        for (qsizetype row = edit.newBegin; row < edit.newEnd; ++row)
            rows.push_back({shown.at(row), shown.sectionAt(row)});
        beginInsertRows({}, int(edit.newBegin), int(edit.newEnd) - 1);
        m_rows.insert(m_rows.begin() + edit.newBegin, std::make_move_iterator(rows.begin()),
                      std::make_move_iterator(rows.end()));
        endInsertRows();
    }
}

/// Tells which of the rows that stayed have other values or stand in another section now.
void EarthquakeSectionModel::replaceChangedRows(const Shown &shown)
{
    qsizetype firstChanged = -1;
    for (qsizetype row = 0; row <= shown.count(); ++row) {
        bool isChanged = false;
        if (row < shown.count()) {
            Row &kept = m_rows[size_t(row)];
            const quint32 section = shown.sectionAt(row);
            isChanged = kept.section != section || !kept.earthquake.isSameRecord(shown.at(row));
            if (isChanged)
                kept = {shown.at(row), section};
        }
        if (isChanged && firstChanged < 0)
            firstChanged = row;
        if (!isChanged && firstChanged >= 0) {
            Q_EMIT dataChanged(index(int(firstChanged)), index(int(row) - 1));
            firstChanged = -1;
        }
    }
}

quint32 EarthquakeSectionModel::numberOfSection(const QString &id)
{
    qsizetype number = m_sectionIds.indexOf(id);
    if (number < 0) {
        number = m_sectionIds.size();
        m_sectionIds.append(id);
    }
    return quint32(number);
}

QString EarthquakeSectionModel::sentence(const Earthquake &earthquake) const
{
    return formatted(localized("list.row.sentence", QStringLiteral("Magnitud %@, %@, %@, profundidad %@")),
                     {fixedText(earthquake.magnitude(), 1), oneLine(earthquake.location()).left(maximumSpokenName),
                      m_dates.string(earthquake.date()), kilometersText(earthquake.depth())});
}
