// SPDX-License-Identifier: GPL-3.0-or-later
#include "FilledStore.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <algorithm>
#include <optional>

namespace {
constexpr int placeNames = 3000;

/// The year and five letters, scattered within the year as the institute's are.
QString eventID(int number)
{
    QString id = QStringLiteral("es%1").arg(2000 + number / Pace::eventsOfAYear);
    constexpr int words = 26 * 26 * 26 * 26 * 26;
    constexpr qint64 stride = 7'654'321;
    qint64 word = number % Pace::eventsOfAYear * stride % words;
    for (int letter = 0; letter < 5; ++letter, word /= 26)
        id.append(QLatin1Char(char('a' + word % 26)));
    return id;
}
}

ParsedEarthquake storedEvent(int number, std::chrono::milliseconds pace)
{
    // Far enough from one another to be told apart on a map at its closest.
    const double drift = number * 1e-6;
    return {.eventID = eventID(number),
            .date = Instant(std::chrono::sys_days{std::chrono::year{2000} / 1 / 1}) + number * pace,
            .latitude = 27.5 + number % 200 * 0.01 + drift,
            .longitude = -18.5 + number % 500 * 0.01 + drift,
            .depth = number % 40 * 1.0,
            .magnitude = number % 50 * 0.1,
            .magnitudeType = QStringLiteral("mbLg"),
            .maxIntensity = number % 20 == 0 ? std::optional(QStringLiteral("II")) : std::nullopt,
            .location = QStringLiteral("SW VILLA DE PUEBLO %1").arg(number % placeNames)};
}

QList<ParsedEarthquake> storedEvents(int begin, int end, std::chrono::milliseconds pace)
{
    QList<ParsedEarthquake> rows;
    for (int number = begin; number < end; ++number)
        rows.append(storedEvent(number, pace));
    return rows;
}

void insertBare(SQLite::Database &database, const QList<ParsedEarthquake> &rows)
{
    SQLite::Transaction transaction(database);
    SQLite::Statement statement(database,
                                "INSERT INTO earthquake (eventID, date, latitude, longitude, depth, "
                                "magnitude, magnitudeType, maxIntensity, location, fetchedAt) "
                                "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    for (const ParsedEarthquake &row : rows) {
        const std::string texts[] = {row.eventID.toStdString(), row.magnitudeType.toStdString(),
                                     row.maxIntensity.value_or(QString()).toStdString(), row.location.toStdString()};
        const std::int64_t date = row.date.time_since_epoch().count();
        statement.bindNoCopy(1, texts[0]);
        statement.bind(2, date);
        statement.bind(3, row.latitude);
        statement.bind(4, row.longitude);
        statement.bind(5, row.depth);
        statement.bind(6, row.magnitude);
        statement.bindNoCopy(7, texts[1]);
        row.maxIntensity ? statement.bindNoCopy(8, texts[2]) : statement.bind(8);
        statement.bindNoCopy(9, texts[3]);
        statement.bind(10, date);
        statement.exec();
        statement.reset();
    }
    transaction.commit();
}

SQLite::Database openBare(const QString &path)
{
    SQLite::Database database(path.toStdString(), SQLite::OPEN_READWRITE);
    database.exec("PRAGMA synchronous = FULL");
    return database;
}

FilledStore::FilledStore(const QString &file, int count, std::chrono::milliseconds pace)
    : path(file)
    , container({.path = path})
{
    constexpr int rowsAtOnce = 100'000;
    SQLite::Database database = openBare(path);
    for (int begin = 0; begin < count; begin += rowsAtOnce)
        insertBare(database, storedEvents(begin, std::min(begin + rowsAtOnce, count), pace));
}
