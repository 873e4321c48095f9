// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/Earthquake.h"

#include <QMetaType>
#include <QtQmlIntegration>

#include <optional>

/// An event on its way through QML, from the screen that shows it to the one that it opens. Opaque there.
struct EarthquakeReference
{
    Q_GADGET
    QML_VALUE_TYPE(earthquakeReference)

public:
    /// Absent in a reference that nobody has set.
    std::optional<Earthquake> earthquake;

    bool operator==(const EarthquakeReference &) const = default;
};
