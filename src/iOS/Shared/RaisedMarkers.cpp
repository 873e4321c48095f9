// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/RaisedMarkers.h"

#include <algorithm>

RaisedMarkers::RaisedMarkers(std::function<QPointF(const Earthquake &)> place, QObject *parent)
    : QAbstractListModel(parent)
    , m_place(std::move(place))
{
}

void RaisedMarkers::update(const std::optional<Earthquake> &latest, const std::optional<Earthquake> &selected)
{
    const std::optional<Earthquake> latestBefore = m_latest;
    const std::optional<Earthquake> selectedBefore = m_selected;
    m_latest = latest;
    m_selected = selected;
    // What is no longer the latest loses its place at once; what was selected keeps it until it has shrunk.
    if (latestBefore && !isLatest(*latestBefore) && !isSelected(*latestBefore))
        if (!selectedBefore || !(*selectedBefore == *latestBefore))
            settle(latestBefore->eventID());
    for (const auto &raised : {latest, selected})
        if (raised)
            add(*raised);
    while (m_earthquakes.size() > most) {
        const auto shrinking = std::find_if(m_earthquakes.begin(), m_earthquakes.end(),
                                            [this](const Earthquake &e) { return !isLatest(e) && !isSelected(e); });
        remove(shrinking - m_earthquakes.begin());
    }
    if (!m_earthquakes.empty())
        Q_EMIT dataChanged(index(0), index(int(m_earthquakes.size()) - 1));
    Q_EMIT changed();
}

void RaisedMarkers::keepOnly(const std::function<bool(const Earthquake &)> &isOnMap)
{
    for (qsizetype row = qsizetype(m_earthquakes.size()) - 1; row >= 0; --row)
        if (!isOnMap(m_earthquakes[size_t(row)]))
            remove(row);
}

void RaisedMarkers::movedAll()
{
    if (!m_earthquakes.empty())
        Q_EMIT dataChanged(index(0), index(int(m_earthquakes.size()) - 1), {positionRole});
}

void RaisedMarkers::settle(const QString &eventID)
{
    for (size_t row = 0; row < m_earthquakes.size(); ++row) {
        const Earthquake &earthquake = m_earthquakes[row];
        if (earthquake.eventID() != eventID || isLatest(earthquake) || isSelected(earthquake))
            continue;
        remove(qsizetype(row));
        Q_EMIT changed();
        return;
    }
}

int RaisedMarkers::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_earthquakes.size());
}

QVariant RaisedMarkers::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Earthquake &earthquake = m_earthquakes[size_t(index.row())];
    switch (role) {
    case eventIDRole:
        return earthquake.eventID();
    case magnitudeRole:
        return earthquake.magnitude();
    case positionRole:
        return m_place(earthquake);
    case isSelectedRole:
        return isSelected(earthquake);
    case isLatestRole:
        return isLatest(earthquake);
    default:
        return {};
    }
}

QHash<int, QByteArray> RaisedMarkers::roleNames() const
{
    return {{eventIDRole, "eventID"},
            {magnitudeRole, "magnitude"},
            {positionRole, "position"},
            {isSelectedRole, "isSelected"},
            {isLatestRole, "isLatest"}};
}

void RaisedMarkers::add(const Earthquake &earthquake)
{
    if (std::find(m_earthquakes.begin(), m_earthquakes.end(), earthquake) != m_earthquakes.end())
        return;
    const int row = int(m_earthquakes.size());
    beginInsertRows({}, row, row);
    m_earthquakes.push_back(earthquake);
    endInsertRows();
}

void RaisedMarkers::remove(qsizetype row)
{
    beginRemoveRows({}, int(row), int(row));
    m_earthquakes.erase(m_earthquakes.begin() + row);
    endRemoveRows();
}
