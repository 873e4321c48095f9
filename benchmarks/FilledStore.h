// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/ParsedEarthquake.h"
#include "Core/Persistence/ModelContainer.h"

#include <QList>

#include <SQLiteCpp/Database.h>

/// How far apart in time the made-up events of a store are.
namespace Pace {
constexpr int eventsOfAYear = 60'000;
/// A busy catalogue.
constexpr auto years = std::chrono::milliseconds(std::chrono::hours(24 * 365)) / eventsOfAYear;
/// A million events within thirty days, all of which the recent list shows.
constexpr auto month = std::chrono::milliseconds(2500);
}

/// The event of a number: the higher, the newer. Its identifier is made as the institute's are, its place is no
/// other's.
ParsedEarthquake storedEvent(int number, std::chrono::milliseconds pace = Pace::years);
/// Those from `begin` up to, without, `end`.
QList<ParsedEarthquake> storedEvents(int begin, int end, std::chrono::milliseconds pace = Pace::years);

/// The yardstick of a save: the same rows into the same table by SQLite alone.
void insertBare(SQLite::Database &database, const QList<ParsedEarthquake> &rows);
/// A store as SQLite alone sees it, and as safe as the program's.
SQLite::Database openBare(const QString &path);

/// A store of the first `count` events in a file of its own.
struct FilledStore
{
    FilledStore(const QString &file, int count, std::chrono::milliseconds pace = Pace::years);

    QString path;
    ModelContainer container;
};
