// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/ViewModels/MapViewModel.h"

#include "Core/Repositories/EarthquakeRepository.h"
#include "Platform/Support/Platform.h"
#include "Platform/Support/Task.h"

MapViewModel::MapViewModel(EarthquakeRepository &repository, QObject *parent)
    : QObject(parent)
    , m_repository(repository)
{
}

void MapViewModel::onAppear()
{
    // Begun even if the screen has gone by then: what a refresh stores is for every screen.
    Task::start(Platform::current().clock, &m_repository,
                [&repository = m_repository](Task &) { repository.refresh(); });
}
