// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/ViewModels/EarthquakeDetailViewModel.h"

#include "Core/Persistence/FetchDescriptor.h"
#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"

namespace {
constexpr int nearbyLimit = 200;

std::vector<Earthquake> fetchNewest(const ModelContext &context)
{
    try {
        return context.fetch({.sort = FetchDescriptor::Sort::dateReverse, .fetchLimit = nearbyLimit});
    } catch (const StoreError &) {
        return {};
    }
}
}

EarthquakeDetailViewModel::EarthquakeDetailViewModel(const Earthquake &earthquake, QObject *parent)
    : QObject(parent)
    , m_earthquake(earthquake)
{
}

void EarthquakeDetailViewModel::loadNearby(ModelContext &context)
{
    std::vector<Earthquake> newest = fetchNewest(context);
    // By event number: the store may hand out another object for the same event.
    std::erase_if(newest,
                  [eventID = m_earthquake.eventID()](const Earthquake &other) { return other.eventID() == eventID; });
    m_nearbyEarthquakes = std::move(newest);
}
