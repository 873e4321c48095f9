// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/MagnitudeCategory.h"
#include "Core/Persistence/ModelContainer.h"
#include "Core/Repositories/EarthquakeRepository.h"
#include "Core/ViewModels/HistoricoViewModel.h"

#include <qqml.h>

// What makes the types of Core known to QML, one declaration for each; Core itself sees no QML.

struct MagnitudeCategoryForeign
{
    Q_GADGET
    QML_FOREIGN(MagnitudeCategory)
    QML_VALUE_TYPE(magnitudeCategory)
};

struct ModelContainerForeign
{
    Q_GADGET
    QML_FOREIGN(ModelContainer)
    QML_NAMED_ELEMENT(ModelContainer)
    QML_UNCREATABLE("made with the program")
};

struct EarthquakeRepositoryForeign
{
    Q_GADGET
    QML_FOREIGN(EarthquakeRepository)
    QML_NAMED_ELEMENT(EarthquakeRepository)
    QML_UNCREATABLE("made with its window")
};

struct HistoricoViewModelForeign
{
    Q_GADGET
    QML_FOREIGN(HistoricoViewModel)
    QML_NAMED_ELEMENT(HistoricoViewModel)
    QML_UNCREATABLE("made with its screen")
};
