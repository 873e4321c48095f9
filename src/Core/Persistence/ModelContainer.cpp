// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/ModelContainer.h"

#include "Core/Persistence/EarthquakeQuery.h"
#include "Core/Persistence/ModelContext.h"
#include "Core/Persistence/StoreFile.h"

ModelContainer::ModelContainer(const Configuration &configuration, QObject *parent)
    : QObject(parent)
    , m_location(configuration.isStoredInMemoryOnly ? newInMemoryLocation() : configuration.path)
    , m_mainContext(std::make_unique<ModelContext>(*this))
{
}

ModelContainer::~ModelContainer() = default;

ModelContext &ModelContainer::mainContext()
{
    return *m_mainContext;
}

EarthquakeQuery &ModelContainer::earthquakes()
{
    if (!m_earthquakes)
        m_earthquakes = std::make_unique<EarthquakeQuery>(*this);
    return *m_earthquakes;
}

void ModelContainer::refreshFromStore()
{
    if (m_earthquakes)
        m_earthquakes->refreshFromStore();
}

PersistentIdentifier ModelContainer::identityOf(qint64 row) const
{
    const auto kept = m_keptIdentities.find(row);
    return kept == m_keptIdentities.end() ? row : kept->second;
}
