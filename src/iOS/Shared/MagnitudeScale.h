// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/MagnitudeCategory.h"
#include "Platform/Text/NumberFormat.h"

#include <QObject>
#include <QtQmlIntegration>

/// Magnitudes as QML shows them.
class MagnitudeScale : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(int count READ count CONSTANT)

public:
    using QObject::QObject;

    /// How many categories there are.
    int count() const { return int(MagnitudeCategory::allCases.size()); }
    /// From the weakest up, by an index from 0 to below count.
    Q_INVOKABLE MagnitudeCategory categoryAt(int index) const { return MagnitudeCategory::allCases.at(size_t(index)); }

    /// To one decimal place.
    Q_INVOKABLE QString text(double magnitude) const { return fixedText(magnitude, 1); }
    Q_INVOKABLE MagnitudeCategory category(double magnitude) const { return MagnitudeCategory::from(magnitude); }
};
