// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QMetaType>
#include <QString>
#include <QtQmlIntegration>

/// The strongest event of a period, as a row shows it.
struct PeakFigure
{
    Q_GADGET
    QML_VALUE_TYPE(peakFigure)
    /// Whether the period has any event; the rest means nothing otherwise.
    Q_PROPERTY(bool isPresent MEMBER isPresent)
    Q_PROPERTY(double magnitude MEMBER magnitude)
    /// Text from outside.
    Q_PROPERTY(QString location MEMBER location)

public:
    bool isPresent = false;
    double magnitude = 0;
    QString location;
};

/// The events of one band of depths, as a row shows them.
struct DepthFigure
{
    Q_GADGET
    QML_VALUE_TYPE(depthFigure)
    Q_PROPERTY(int count MEMBER count)
    /// Share of all events, 0 to 1.
    Q_PROPERTY(double fraction MEMBER fraction)

public:
    int count = 0;
    double fraction = 0;
};
