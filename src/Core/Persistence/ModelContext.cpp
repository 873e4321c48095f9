// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/ModelContext.h"

#include "Core/Models/EarthquakeRecord.h"
#include "Core/Models/InternedTexts.h"
#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/StoreFile.h"
#include "Platform/Text/UserCalendar.h"

#include <SQLiteCpp/Exception.h>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>

#include <sqlite3.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>
#include <unordered_map>
#include <utility>

namespace {
constexpr auto columns = "id, eventID, date, latitude, longitude, depth, magnitude, magnitudeType, maxIntensity, "
                         "location, fetchedAt";

constexpr auto upsert = R"sql(
    INSERT INTO earthquake (eventID, date, latitude, longitude, depth, magnitude, magnitudeType, maxIntensity,
                            location, fetchedAt)
    VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10)
    ON CONFLICT (eventID) DO UPDATE SET
        date = ?2, latitude = ?3, longitude = ?4, depth = ?5, magnitude = ?6, magnitudeType = ?7, maxIntensity = ?8,
        location = ?9, fetchedAt = ?10
    RETURNING id
    )sql";

/// The type that the statements take.
std::int64_t milliseconds(Instant instant)
{
    return instant.time_since_epoch().count();
}

Instant instant(qint64 milliseconds)
{
    return Instant(std::chrono::milliseconds(milliseconds));
}

std::string_view text(const SQLite::Column &column)
{
    // The order matters: the bytes are those of the text.
    const char *const begin = column.getText();
    return {begin, size_t(column.getBytes())};
}

/// A SELECT of whole events, by SQLite's own calls: of a store of many events the wrapper's columns, each of which
/// holds its statement, would cost more than their values.
class EventSelect
{
public:
    EventSelect(const SQLite::Database &database, const std::string &sql)
        : m_database(database.getHandle())
    {
        check(sqlite3_prepare_v2(m_database, sql.c_str(), -1, &m_statement, nullptr), SQLITE_OK);
    }
    ~EventSelect() { sqlite3_finalize(m_statement); }
    Q_DISABLE_COPY_MOVE(EventSelect)

    void bind(int index, std::int64_t value) { check(sqlite3_bind_int64(m_statement, index, value), SQLITE_OK); }

    /// False behind the last row.
    bool step()
    {
        const int result = sqlite3_step(m_statement);
        if (result == SQLITE_DONE)
            return false;
        check(result, SQLITE_ROW);
        return true;
    }

    bool isNull(int column) const { return sqlite3_column_type(m_statement, column) == SQLITE_NULL; }
    std::int64_t integer(int column) const { return sqlite3_column_int64(m_statement, column); }

    /// SQLite keeps what is not a number as NULL.
    double number(int column) const
    {
        return isNull(column) ? std::numeric_limits<double>::quiet_NaN() : sqlite3_column_double(m_statement, column);
    }

    /// Until the next step().
    std::string_view text(int column) const
    {
        // The order matters: the bytes are those of the text. A text that is NULL is no pointer.
        const auto *const begin = reinterpret_cast<const char *>(sqlite3_column_text(m_statement, column));
        return {begin ? begin : "", size_t(sqlite3_column_bytes(m_statement, column))};
    }

private:
    void check(int result, int expected) const
    {
        if (result != expected)
            throw SQLite::Exception(m_database, result);
    }

    sqlite3 *m_database;
    sqlite3_stmt *m_statement = nullptr;
};

/// Stored and pending events in the order of `sort`, which both have already. Pending ones are later rows.
std::vector<Earthquake> withPending(std::vector<Earthquake> stored, const std::vector<Earthquake> &pending,
                                    FetchDescriptor::Sort sort)
{
    if (sort == FetchDescriptor::Sort::none) {
        stored.insert(stored.end(), pending.begin(), pending.end());
        return stored;
    }
    std::vector<Earthquake> merged;
    merged.reserve(stored.size() + pending.size());
    std::merge(pending.begin(), pending.end(), stored.begin(), stored.end(), std::back_inserter(merged),
               [](const Earthquake &a, const Earthquake &b) { return a.date() > b.date(); });
    return merged;
}

/// The bounds as one closed span of milliseconds: instants have no finer step.
struct Span
{
    explicit Span(const DateRange &dates)
    {
        if (dates.from)
            first = milliseconds(*dates.from);
        if (dates.through)
            last = milliseconds(*dates.through);
        if (dates.before)
            last = std::min(last, milliseconds(*dates.before) - 1);
    }

    bool isWhole() const { return first == earliest && last == latest; }

    static constexpr std::int64_t earliest = std::numeric_limits<std::int64_t>::min();
    static constexpr std::int64_t latest = std::numeric_limits<std::int64_t>::max();
    std::int64_t first = earliest;
    std::int64_t last = latest;
};
}

struct ModelContext::Private
{
    explicit Private(ModelContainer &owner)
        : container(owner)
        , database(openStore(owner.location()))
    {
    }

    /// Calls `read`, whose failures become failures of the store.
    template<class Read>
    auto reading(Read read) const
    {
        try {
            return read();
        } catch (const SQLite::Exception &error) {
            throw storeError(container.location(), error.what());
        }
    }

    Earthquake earthquake(const EventSelect &row) const
    {
        auto *record = new EarthquakeRecord;
        record->id = container.identityOf(row.integer(0));
        record->eventID = row.text(1);
        record->date = instant(row.integer(2));
        record->latitude = row.number(3);
        record->longitude = row.number(4);
        record->depth = row.number(5);
        record->magnitude = row.number(6);
        record->magnitudeTypeIndex = InternedTexts::labels().indexOf(row.text(7));
        if (!row.isNull(8))
            record->maxIntensityIndex = InternedTexts::labels().indexOf(row.text(8));
        record->locationIndex = InternedTexts::placeNames().indexOf(row.text(9));
        record->fetchedAt = instant(row.integer(10));
        return Earthquake(record);
    }

    std::vector<Earthquake> earthquakes(EventSelect &select) const
    {
        std::vector<Earthquake> rows;
        while (select.step())
            rows.push_back(earthquake(select));
        return rows;
    }

    std::vector<Earthquake> stored(const FetchDescriptor &descriptor, std::int64_t offset, std::int64_t limit) const
    {
        const bool isSorted = descriptor.sort == FetchDescriptor::Sort::dateReverse;
        EventSelect select(database,
                           std::string("SELECT ") + columns + " FROM earthquake WHERE date BETWEEN ? AND ?"
                               + (isSorted ? " ORDER BY date DESC, id DESC" : " ORDER BY id") + " LIMIT ? OFFSET ?");
        const Span span(descriptor.dates);
        select.bind(1, span.first);
        select.bind(2, span.last);
        select.bind(3, limit);
        select.bind(4, offset);
        return earthquakes(select);
    }

    /// The pending events that match, in the order of `descriptor`.
    std::vector<Earthquake> matchingPending(const FetchDescriptor &descriptor) const
    {
        std::vector<Earthquake> matching;
        for (const Earthquake &earthquake : pending)
            if (descriptor.dates.contains(earthquake.date()))
                matching.push_back(earthquake);
        if (descriptor.sort == FetchDescriptor::Sort::dateReverse) {
            std::reverse(matching.begin(), matching.end());
            std::stable_sort(matching.begin(), matching.end(),
                             [](const Earthquake &a, const Earthquake &b) { return a.date() > b.date(); });
        }
        return matching;
    }

    qint64 lastRow() { return database.execAndGet("SELECT ifnull(max(id), 0) FROM earthquake").getInt64(); }

    /// Writes all that is pending and gives the row of each, in the same order.
    std::vector<qint64> writePending()
    {
        SQLite::Statement statement(database, upsert);
        std::vector<qint64> rows;
        for (const Earthquake &earthquake : pending) {
            bind(statement, *earthquake.m_record);
            statement.executeStep();
            rows.push_back(statement.getColumn(0).getInt64());
            // A statement that is not stepped to its end holds the transaction open.
            statement.reset();
        }
        return rows;
    }

    /// Gives the pending events, just written, the identities of their rows, and tells the container.
    void settle(const std::vector<qint64> &rows, qint64 lastRowBefore)
    {
        std::unordered_map<qint64, size_t> lastOfRow;
        for (size_t i = 0; i < rows.size(); ++i) {
            const bool isFirstOfRow = lastOfRow.insert_or_assign(rows[i], i).second;
            if (isFirstOfRow && rows[i] > lastRowBefore && i < seen)
                container.m_keptIdentities.emplace(rows[i], pending[i].id());
            pending[i].m_record->id = container.identityOf(rows[i]);
        }
        std::vector<Earthquake> inserted;
        std::vector<Earthquake> replaced;
        for (size_t i = 0; i < rows.size(); ++i)
            if (lastOfRow.at(rows[i]) == i)
                (rows[i] > lastRowBefore ? inserted : replaced).push_back(pending[i]);
        pending.clear();
        seen = 0;
        Q_EMIT container.didSave(inserted, replaced);
    }

    /// The numbers stored around the dates of a page, nearly all of those it lists: one read of neighbouring rows
    /// instead of a search for each. A page of wild dates must not read the whole store.
    void addKnownByDate(const QList<ParsedEarthquake> &rows, const std::unordered_set<QString> &wanted,
                        std::unordered_set<QString> &known) const
    {
        const auto byDate = [](const ParsedEarthquake &a, const ParsedEarthquake &b) { return a.date < b.date; };
        const auto [oldest, newest] = std::minmax_element(rows.begin(), rows.end(), byDate);
        SQLite::Statement select(database, "SELECT eventID FROM earthquake WHERE date BETWEEN ? AND ? LIMIT ?");
        select.bind(1, milliseconds(oldest->date - std::chrono::days(1)));
        select.bind(2, milliseconds(newest->date + std::chrono::days(1)));
        select.bind(3, std::int64_t(2 * rows.size() + 1000));
        while (select.executeStep()) {
            const std::string_view eventID = text(select.getColumn(0));
            if (QString found = QString::fromUtf8(eventID.data(), qsizetype(eventID.size())); wanted.contains(found))
                known.insert(std::move(found));
        }
    }

    void addKnownByKey(const std::unordered_set<QString> &wanted, std::unordered_set<QString> &known) const
    {
        SQLite::Statement select(database, "SELECT 1 FROM earthquake WHERE eventID = ?");
        for (const QString &eventID : wanted) {
            if (known.contains(eventID))
                continue;
            select.bind(1, eventID.toStdString());
            if (select.executeStep())
                known.insert(eventID);
            select.reset();
        }
    }

    static void bind(SQLite::Statement &statement, const EarthquakeRecord &record)
    {
        const InternedTexts &labels = InternedTexts::labels();
        statement.bindNoCopy(1, record.eventID);
        statement.bind(2, milliseconds(record.date));
        statement.bind(3, record.latitude);
        statement.bind(4, record.longitude);
        statement.bind(5, record.depth);
        statement.bind(6, record.magnitude);
        statement.bind(7, labels.text(record.magnitudeTypeIndex).toStdString());
        if (record.maxIntensityIndex == EarthquakeRecord::noIntensity)
            statement.bind(8);
        else
            statement.bind(8, labels.text(record.maxIntensityIndex).toStdString());
        statement.bind(9, InternedTexts::placeNames().text(record.locationIndex).toStdString());
        statement.bind(10, milliseconds(record.fetchedAt));
    }

    ModelContainer &container;
    SQLite::Database database;
    std::vector<Earthquake> pending;
    /// This many of `pending` have been given out: they keep their identifiers.
    mutable size_t seen = 0;
};

ModelContext::ModelContext(ModelContainer &container)
    : d(std::make_unique<Private>(container))
{
}

ModelContext::~ModelContext() = default;

ModelContainer &ModelContext::container() const
{
    return d->container;
}

std::vector<Earthquake> ModelContext::fetch(const FetchDescriptor &descriptor) const
{
    const std::vector<Earthquake> pending = d->matchingPending(descriptor);
    d->seen = d->pending.size();
    const qint64 offset = std::max(0, descriptor.fetchOffset);
    const qint64 end =
        descriptor.fetchLimit ? offset + std::max(0, *descriptor.fetchLimit) : std::numeric_limits<qint64>::max();
    // However the pending events fall among the stored ones, these stand before the offset.
    const qint64 skipped = std::max<qint64>(0, offset - qint64(pending.size()));
    std::vector<Earthquake> stored = d->reading([&] { return d->stored(descriptor, skipped, end - skipped); });
    if (pending.empty())
        return stored;

    std::vector<Earthquake> merged = withPending(std::move(stored), pending, descriptor.sort);
    merged.erase(merged.begin(), merged.begin() + std::min(offset - skipped, qint64(merged.size())));
    if (qint64(merged.size()) > end - offset)
        merged.erase(merged.begin() + (end - offset), merged.end());
    return merged;
}

qint64 ModelContext::fetchCount(const FetchDescriptor &descriptor) const
{
    const qint64 stored = d->reading([&] {
        const Span span(descriptor.dates);
        // A whole table is counted by its pages, five times as fast as a span of all dates by its rows.
        if (span.isWhole())
            return d->database.execAndGet("SELECT count(*) FROM earthquake").getInt64();
        SQLite::Statement count(d->database, "SELECT count(*) FROM earthquake WHERE date BETWEEN ? AND ?");
        count.bind(1, span.first);
        count.bind(2, span.last);
        count.executeStep();
        return count.getColumn(0).getInt64();
    });
    return stored + std::count_if(d->pending.begin(), d->pending.end(), [&](const Earthquake &earthquake) {
               return descriptor.dates.contains(earthquake.date());
           });
}

std::vector<Instant> ModelContext::newestDateOfEachYear() const
{
    FetchDescriptor newest{.sort = FetchDescriptor::Sort::dateReverse, .fetchLimit = 1};
    std::vector<Instant> dates;
    for (auto found = fetch(newest); !found.empty(); found = fetch(newest)) {
        const Instant date = dates.emplace_back(found.front().date());
        const auto yearStart = UserCalendar::startOfYear(UserCalendar::year(date));
        // The number of a year in an era that has ended stands for a year of today's era: then day by day.
        newest.dates.before = yearStart && *yearStart <= date ? *yearStart : UserCalendar::startOfDay(date);
    }
    return dates;
}

std::vector<Earthquake> ModelContext::fetchRowsAfter(qint64 row) const
{
    return d->reading([&] {
        EventSelect select(d->database, std::string("SELECT ") + columns + " FROM earthquake WHERE id > ? ORDER BY id");
        select.bind(1, row);
        return d->earthquakes(select);
    });
}

qint64 ModelContext::lastRow() const
{
    return d->reading([&] { return d->lastRow(); });
}

int ModelContext::dataVersion() const
{
    return d->reading([&] { return d->database.execAndGet("PRAGMA data_version").getInt(); });
}

std::unordered_set<QString> ModelContext::knownEventIDs(const QList<ParsedEarthquake> &rows) const
{
    std::unordered_set<QString> known;
    if (rows.isEmpty())
        return known;
    std::unordered_set<QString> wanted;
    for (const ParsedEarthquake &row : rows)
        wanted.insert(row.eventID);
    for (const Earthquake &earthquake : d->pending)
        if (const QString eventID = earthquake.eventID(); wanted.contains(eventID))
            known.insert(eventID);
    d->reading([&] {
        d->addKnownByDate(rows, wanted, known);
        d->addKnownByKey(wanted, known);
    });
    return known;
}

bool ModelContext::hasChanges() const
{
    return !d->pending.empty();
}

const std::vector<Earthquake> &ModelContext::insertedEarthquakes() const
{
    d->seen = d->pending.size();
    return d->pending;
}

void ModelContext::insert(const Earthquake &earthquake)
{
    d->pending.push_back(earthquake);
}

void ModelContext::save()
{
    if (d->pending.empty())
        return;
    try {
        SQLite::Transaction transaction(d->database, SQLite::TransactionBehavior::IMMEDIATE);
        const qint64 lastRowBefore = d->lastRow();
        const std::vector<qint64> rows = d->writePending();
        transaction.commit();
        d->settle(rows, lastRowBefore);
    } catch (const SQLite::Exception &error) {
        const StoreError failure = storeError(d->container.location(), error.what());
        if (this == &d->container.mainContext())
            Q_EMIT d->container.didFailToSave();
        throw failure;
    }
}
