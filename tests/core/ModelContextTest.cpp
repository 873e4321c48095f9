// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/ModelContext.h"
#include "Core/Persistence/ModelContainer.h"
#include "Platform/Text/NumberFormat.h"
#include "Support/Table.h"
#include "Support/TestEarthquake.h"
#include "Support/TestInstant.h"
#include "Support/World.h"

#include <QTest>

#include <algorithm>
#include <limits>

namespace {
constexpr auto newestFirst = FetchDescriptor::Sort::dateReverse;

Earthquake quake(const char *eventID, qint64 second, double magnitude = 2.5)
{
    return testEarthquake(QString::fromLatin1(eventID), second, magnitude);
}

Instant at(qint64 second)
{
    return Instant(std::chrono::seconds(second));
}

/// A row of the page with the given number and second.
ParsedEarthquake pageRow(const char *eventID, qint64 second)
{
    return testRow(QString::fromLatin1(eventID), at(second));
}

QString sorted(const std::unordered_set<QString> &texts)
{
    QStringList list(texts.begin(), texts.end());
    list.sort();
    return list.join(QLatin1Char(' '));
}

/// A store in a file of its own.
struct Store
{
    World world;
    QString path = world.folder.filePath(QStringLiteral("store.sqlite"));
    ModelContainer container{{.path = path}};
    ModelContext &context = container.mainContext();

    void save(std::initializer_list<Earthquake> earthquakes)
    {
        for (const Earthquake &earthquake : earthquakes)
            context.insert(earthquake);
        context.save();
    }
};
}

class ModelContextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyValueComesBack_data()
    {
        const Table<Earthquake> row;
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const double infinity = std::numeric_limits<double>::infinity();
        const QString text = QString::fromUtf8("Ñandú “β” 🌋");
        const QString withNul = QStringLiteral("a\0b").append(QChar(0)).append(QLatin1Char('c'));
        const Instant now = instant("2025-03-30T00:59:59.999Z");
        const Instant old = instant("1907-01-18T03:04:05Z");
        row("plain",
            Earthquake(QStringLiteral("es2025abcde"), now, 28.5, -16.25, 12, 3.75, QStringLiteral("mbLg"),
                       QStringLiteral("III-IV"), text, old));
        row("nothing in the texts",
            Earthquake(QString(), now, -90, 180, -3.5, -0.4, QString(), QString(QLatin1String("")), QString(), now));
        row("no numbers", Earthquake(text, now, nan, nan, infinity, -infinity, text, text, text, now));
        row("text goes on after NUL", Earthquake(withNul, now, 1, 2, 3, 4, withNul, withNul, withNul, now));
    }

    void everyValueComesBack()
    {
        const auto [saved] = Table<Earthquake>::current();
        World world;
        const QString path = world.folder.filePath(QStringLiteral("deep/er/store.sqlite"));
        {
            ModelContainer container({.path = path});
            container.mainContext().insert(saved);
            container.mainContext().save();
        }
        ModelContainer container({.path = path});
        const auto rows = container.mainContext().fetch({});
        QCOMPARE(rows.size(), size_t(1));
        QCOMPARE(fields(rows.front()), fields(saved));
    }

    void fetchesAgreeWithAListOfAll_data()
    {
        const Table<QString> row;
        row("nothing pending", "");
        row("newest", "9");
        row("oldest", "0");
        row("between and twice the same", "4 4 2");
        row("more than are stored", "1 2 3 4 5 6 7 8 9");
    }

    void fetchesAgreeWithAListOfAll()
    {
        const auto [pending] = Table<QString>::current();
        Store store;
        std::vector<Earthquake> all = {quake("a", 4), quake("b", 2), quake("c", 4), quake("d", 8)};
        store.save({all[0], all[1], all[2], all[3]});
        for (const QString &second : pending.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
            all.push_back(testEarthquake(QStringLiteral("p%1").arg(all.size()), second.toLongLong()));
            store.context.insert(all.back());
        }
        const std::vector<DateRange> ranges = {{},
                                               {.from = at(4)},
                                               {.before = at(4)},
                                               {.through = at(4)},
                                               {.from = at(2), .before = at(8)},
                                               {.from = at(4), .through = at(4)}};
        for (const DateRange &range : ranges) {
            QCOMPARE(store.context.fetchCount({.dates = range}), qint64(expected(all, {.dates = range}).size()));
            for (const auto sort : {FetchDescriptor::Sort::none, newestFirst})
                for (int offset = 0; offset <= int(all.size()) + 1; ++offset)
                    for (int limit = -1; limit <= int(all.size()) + 1; ++limit) {
                        const FetchDescriptor descriptor{.dates = range,
                                                         .sort = sort,
                                                         .fetchLimit = limit < 0 ? std::nullopt : std::optional(limit),
                                                         .fetchOffset = offset};
                        QCOMPARE(eventIDs(store.context.fetch(descriptor)), eventIDs(expected(all, descriptor)));
                    }
        }
    }

    void anEventTakesTheIdentityOfItsRow()
    {
        Store store;
        store.save({quake("a", 1)});
        const Earthquake first = quake("b", 2);
        const Earthquake second = quake("b", 3, 4.5);
        QVERIFY(first.id() < 0 && first != second);
        store.save({first, second});
        QCOMPARE(first.id(), PersistentIdentifier(2));
        QVERIFY(first == second && qHash(first) == qHash(second));
        QCOMPARE(second.magnitude(), 4.5);
        const auto rows = store.context.fetch({});
        QCOMPARE(eventIDs(rows), QStringLiteral("a b"));
        QVERIFY(rows.back() == first);
        QCOMPARE(rows.back().magnitude(), 4.5);
    }

    void contextsSeeOneAnotherAfterASave()
    {
        Store store;
        ModelContext other(store.container);
        store.save({quake("a", 1)});
        other.insert(quake("b", 2));
        QCOMPARE(eventIDs(store.context.fetch({})), QStringLiteral("a"));
        // Both take the same event for new.
        other.insert(quake("c", 3, 3.0));
        store.context.insert(quake("c", 3, 4.0));
        other.save();
        store.context.save();
        const auto rows = other.fetch({});
        QCOMPARE(eventIDs(rows), QStringLiteral("a b c"));
        QCOMPARE(rows.back().magnitude(), 4.0);
        QCOMPARE(rows.back().id(), PersistentIdentifier(3));
    }

    void aSaveHoldsWhileAnotherContextReads()
    {
        Store store;
        ModelContext other(store.container);
        store.save({quake("a", 1), quake("b", 2)});
        QCOMPARE(other.knownEventIDs({pageRow("a", 1), pageRow("z", 1)}).size(), size_t(1));
        QCOMPARE(other.fetch({.fetchLimit = 1}).size(), size_t(1));
        QCOMPARE(other.fetchCount({}), qint64(2));
        store.save({quake("c", 3)});
        other.insert(quake("d", 4));
        other.save();
        QCOMPARE(eventIDs(store.context.fetch({})), QStringLiteral("a b c d"));
    }

    void knownNumbersAreFound_data()
    {
        const Table<QList<ParsedEarthquake>, QString> row;
        using Rows = QList<ParsedEarthquake>;
        row("none known", Rows{pageRow("x", 1000)}, "");
        row("date as stored", Rows{pageRow("a", 1000), pageRow("x", 1000)}, "a");
        row("date corrected by years", Rows{pageRow("a", 900'000'000)}, "a");
        row("pending", Rows{pageRow("p", 1000)}, "p");
        row("wild dates", Rows{pageRow("a", -60'000'000'000), pageRow("b", 200'000'000'000)}, "a b");
        row("other letter case", Rows{pageRow("A", 1000)}, "");
        row("behind thousands of others", Rows{pageRow("n4999", 5000), pageRow("n0", 90'000)}, "n0 n4999");
    }

    void knownNumbersAreFound()
    {
        const auto [rows, expected] = Table<QList<ParsedEarthquake>, QString>::current();
        Store store;
        for (int i = 0; i < 5000; ++i)
            store.context.insert(testEarthquake(QStringLiteral("n%1").arg(i), 5000 + i));
        store.save({quake("a", 1000), quake("b", 2000)});
        store.context.insert(quake("p", 1000));
        QCOMPARE(sorted(store.context.knownEventIDs(rows)), expected);
    }

    void eachYearTellsItsNewestDate()
    {
        Store store;
        QVERIFY(store.context.newestDateOfEachYear().empty());
        const auto add = [&](const char *eventID, const char *date) {
            store.context.insert(quake(eventID, instant(date).time_since_epoch() / std::chrono::seconds(1)));
        };
        add("a", "1975-05-01T00:00:00Z");
        add("b", "2024-12-31T23:59:59Z");
        add("c", "2024-01-01T00:00:00Z");
        add("d", "2025-01-01T00:00:00Z");
        store.context.save();
        add("e", "2025-01-01T00:00:01Z");
        QStringList dates;
        for (const Instant date : store.context.newestDateOfEachYear())
            dates.append(isoText(date));
        QCOMPARE(dates.join(QLatin1Char(' ')),
                 QStringLiteral("2025-01-01T00:00:01Z 2024-12-31T23:59:59Z 1975-05-01T00:00:00Z"));
    }

private:
    static QStringList fields(const Earthquake &of)
    {
        return {of.eventID(),
                isoText(of.date()),
                shortestText(of.latitude()),
                shortestText(of.longitude()),
                shortestText(of.depth()),
                shortestText(of.magnitude()),
                of.magnitudeType(),
                of.maxIntensity().value_or(QStringLiteral("none")),
                of.location(),
                isoText(of.fetchedAt())};
    }

    /// `all`, in the order in which they came, by the rules of a fetch.
    static std::vector<Earthquake> expected(std::vector<Earthquake> all, const FetchDescriptor &descriptor)
    {
        std::erase_if(all, [&](const Earthquake &earthquake) { return !descriptor.dates.contains(earthquake.date()); });
        if (descriptor.sort == newestFirst) {
            std::reverse(all.begin(), all.end());
            std::stable_sort(all.begin(), all.end(),
                             [](const Earthquake &a, const Earthquake &b) { return a.date() > b.date(); });
        }
        const auto size = qsizetype(all.size());
        const auto begin = std::min<qsizetype>(descriptor.fetchOffset, size);
        const auto end = std::min<qsizetype>(begin + descriptor.fetchLimit.value_or(1000), size);
        return {all.begin() + begin, all.begin() + end};
    }
};

QTEST_GUILESS_MAIN(ModelContextTest)
#include "ModelContextTest.moc"
