// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "iOS/Shared/EarthquakeMarkerSet.h"

#include <QAbstractListModel>
#include <QPointF>

#include <functional>

/// The few markers that are items of their own above all others, because they move: the latest one with its rings,
/// the selected one, and one that was selected until now and still shrinks.
class RaisedMarkers : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the marker layer")

public:
    enum Role {
        eventIDRole = Qt::UserRole,
        magnitudeRole,
        positionRole, ///< where its centre is in the layer, in pixels
        isSelectedRole,
        isLatestRole
    };
    /// Those that shrink are few: one more and the first of them is dropped at once.
    static constexpr int most = 4;

    /// `place` tells where an event is in the layer.
    explicit RaisedMarkers(std::function<QPointF(const Earthquake &)> place, QObject *parent = nullptr);

    /// Takes over what is latest and selected. An event that is not on the map is not raised.
    void update(const std::optional<Earthquake> &latest, const std::optional<Earthquake> &selected);
    /// Drops those that are no longer on the map.
    void keepOnly(const std::function<bool(const Earthquake &)> &isOnMap);
    /// The layer has moved under the markers.
    void movedAll();
    /// A marker has shrunk to its size of rest: it goes back among the others.
    Q_INVOKABLE void settle(const QString &eventID);

    const std::vector<Earthquake> &earthquakes() const { return m_earthquakes; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    /// Another set of events is raised.
    void changed();

private:
    bool isLatest(const Earthquake &earthquake) const { return m_latest && *m_latest == earthquake; }
    bool isSelected(const Earthquake &earthquake) const { return m_selected && *m_selected == earthquake; }
    void add(const Earthquake &earthquake);
    void remove(qsizetype row);

    std::function<QPointF(const Earthquake &)> m_place;
    std::vector<Earthquake> m_earthquakes;
    std::optional<Earthquake> m_latest;
    std::optional<Earthquake> m_selected;
};
