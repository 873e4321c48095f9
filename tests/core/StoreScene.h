// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Persistence/EarthquakeQuery.h"
#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"
#include "Core/Repositories/EarthquakeRepository.h"
#include "Support/FakeDataSource.h"
#include "Support/TestEarthquake.h"
#include "Support/World.h"

#include <SQLiteCpp/Database.h>

/// A store in a file, and a repository over it whose source a test commands.
struct StoreScene
{
    /// Over the store at `path`, by default in a folder of its own.
    explicit StoreScene(const QString &path = {})
        : container({.path = path.isEmpty() ? world.folder.filePath(QStringLiteral("store.sqlite")) : path})
    {
    }

    void save(const std::vector<Earthquake> &earthquakes) { save(context, earthquakes); }
    static void save(ModelContext &into, const std::vector<Earthquake> &earthquakes)
    {
        for (const Earthquake &earthquake : earthquakes)
            into.insert(earthquake);
        into.save();
    }

    /// Runs a statement behind the program's back.
    void execute(const char *sql) const
    {
        SQLite::Database(container.location().toStdString(), SQLite::OPEN_READWRITE).exec(sql);
    }

    World world;
    ModelContainer container;
    ModelContext &context = container.mainContext();
    FakeDataSource *source = new FakeDataSource;
    EarthquakeRepository repository{context, std::unique_ptr<EarthquakeDataSource>(source)};
};

/// Statements after which no event can be saved, and can again.
inline constexpr auto refuseInserts =
    "CREATE TRIGGER refuse BEFORE INSERT ON earthquake BEGIN SELECT RAISE(ABORT, 'refused by a trigger'); END";
inline constexpr auto allowInserts = "DROP TRIGGER refuse";
