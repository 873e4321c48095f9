// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/Earthquake.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <optional>
#include <vector>

/// The events of a map and which of them is selected: what a screen tells its markers.
class EarthquakeMarkerSet : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by a screen")

public:
    using QObject::QObject;

    /// Newest first.
    const std::vector<Earthquake> &earthquakes() const { return m_earthquakes; }
    /// The newest one that is on the map; absent on an empty map.
    std::optional<Earthquake> latest() const;
    /// Need not be on the map.
    const std::optional<Earthquake> &selected() const { return m_selected; }

    void setEarthquakes(std::vector<Earthquake> earthquakes);
    void setSelected(const std::optional<Earthquake> &selected);

Q_SIGNALS:
    void earthquakesChanged();
    void selectedChanged();

private:
    std::vector<Earthquake> m_earthquakes;
    std::optional<Earthquake> m_selected;
};
