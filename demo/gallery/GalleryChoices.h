// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "iOS/Shared/PickerModel.h"

/// Choices to show in the gallery.
class GalleryChoices : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(PickerModel *radii MEMBER m_radii CONSTANT)
    Q_PROPERTY(PickerModel *intervals MEMBER m_intervals CONSTANT)
    Q_PROPERTY(PickerModel *categories MEMBER m_categories CONSTANT)

public:
    explicit GalleryChoices(QObject *parent = nullptr)
        : QObject(parent)
    {
    }

private:
    PickerModel *m_radii =
        new PickerModel({{QStringLiteral("50 km")}, {QStringLiteral("100 km")}, {QStringLiteral("200 km")}}, this);
    PickerModel *m_intervals = new PickerModel({{QStringLiteral("5 minutes")}, {QStringLiteral("10 minutes")}}, this);
    PickerModel *m_categories = new PickerModel({{QStringLiteral("Micro (< 2.0)"), QColor(0xFFF7A6)},
                                                 {QStringLiteral("Leve (2.0 – 3.9)"), QColor(0xFFD900)},
                                                 {QStringLiteral("Moderado (4.0 – 5.9)"), QColor(0xFF9900)}},
                                                this);
};
