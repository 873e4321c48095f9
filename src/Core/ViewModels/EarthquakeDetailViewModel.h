// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/Earthquake.h"
#include "Platform/Support/Published.h"

#include <QObject>

#include <vector>

class ModelContext;

/// Stands behind the screen of one event.
class EarthquakeDetailViewModel : public QObject
{
    Q_OBJECT

public:
    explicit EarthquakeDetailViewModel(const Earthquake &earthquake, QObject *parent = nullptr);

    /// The event on display.
    const Earthquake &earthquake() const { return m_earthquake; }

    /// The other events for the map, newest first: the 200 newest of the store less the event itself, so 199 or 200
    /// of them in a large store. What is near among them is left to the map's visible area.
    const std::vector<Earthquake> &nearbyEarthquakes() const { return m_nearbyEarthquakes; }

    /// Reads the list anew. A failure leaves it empty.
    void loadNearby(ModelContext &context);

Q_SIGNALS:
    void nearbyEarthquakesChanged();

private:
    const Earthquake m_earthquake;
    Published<std::vector<Earthquake>> m_nearbyEarthquakes{this, &EarthquakeDetailViewModel::nearbyEarthquakesChanged};
};
