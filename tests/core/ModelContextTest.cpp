// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/ModelContext.h"
#include "Platform/Text/NumberFormat.h"
#include "StoreScene.h"
#include "Support/Table.h"
#include "Support/TestInstant.h"

#include <QTest>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

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
        const QString text = u"Ñandú “β” 🌋"_s;
        const QString withNul = u"a\0b\0c"_s;
        const Instant now = instant("2025-03-30T00:59:59.999Z");
        const Instant old = instant("1907-01-18T03:04:05Z");
        row("plain", Earthquake(u"es2025abcde"_s, now, 28.5, -16.25, 12, 3.75, u"mbLg"_s, u"III-IV"_s, text, old));
        row("nothing in the texts", Earthquake(QString(), now, -90, 180, -3.5, -0.4, QString(), u""_s, QString(), now));
        row("no numbers", Earthquake(text, now, nan, nan, infinity, -infinity, text, text, text, now));
        row("text goes on after NUL", Earthquake(withNul, now, 1, 2, 3, 4, withNul, withNul, withNul, now));
    }

    void everyValueComesBack()
    {
        const auto [saved] = Table<Earthquake>::current();
        World world;
        const QString path = world.folder.filePath(u"deep/er/store.sqlite"_s);
        StoreScene::save(ModelContainer({.path = path}).mainContext(), {saved});
        const auto rows = ModelContainer({.path = path}).mainContext().fetch({});
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
        StoreScene store;
        std::vector<Earthquake> all = {quake("a", 4), quake("b", 2), quake("c", 4), quake("d", 8)};
        store.save(all);
        for (const QString &second : pending.split(u' ', Qt::SkipEmptyParts)) {
            all.push_back(testEarthquake(u"p%1"_s.arg(all.size()), second.toLongLong()));
            store.context.insert(all.back());
        }
        const DateRange everything;
        const DateRange beforeAnInstant{.before = at(4)};
        const DateRange throughAnInstant{.through = at(4)};
        const DateRange between{.from = at(2), .before = at(8)};
        for (const DateRange &range : {everything, beforeAnInstant, throughAnInstant, between}) {
            QCOMPARE(store.context.fetchCount({.dates = range}), qint64(expected(all, {.dates = range}).size()));
            for (const auto sort : {FetchDescriptor::Sort::none, newestFirst})
                for (int offset = 0; offset <= int(all.size()) + 1; ++offset) {
                    FetchDescriptor descriptor{.dates = range, .sort = sort, .fetchOffset = offset};
                    for (int limit = 0; limit <= int(all.size()) + 2; ++limit) {
                        QCOMPARE(eventIDs(store.context.fetch(descriptor)), eventIDs(expected(all, descriptor)));
                        descriptor.fetchLimit = limit;
                    }
                }
        }
    }

    void anEventTakesTheIdentityOfItsRow()
    {
        StoreScene store;
        store.save({quake("a", 1)});
        const Earthquake first = quake("b", 2);
        const Earthquake second = quake("b", 3, 4.5);
        QVERIFY(first.id() < 0 && first != second);
        store.save({first, second});
        QCOMPARE(first.id(), PersistentIdentifier(2));
        QVERIFY(first == second && qHash(first) == qHash(second));
        QCOMPARE(second.magnitude(), 4.5);
        const auto rows = store.context.fetch({});
        QCOMPARE(eventIDs(rows), u"a b"_s);
        QVERIFY(rows.back() == first);
    }

    void contextsSeeOneAnotherAfterASave()
    {
        StoreScene store;
        ModelContext other(store.container);
        store.save({quake("a", 1)});
        other.insert(quake("b", 2));
        QCOMPARE(eventIDs(store.context.fetch({})), u"a"_s);
        // Both take the same event for new.
        other.insert(quake("c", 3, 3.0));
        store.context.insert(quake("c", 3, 4.0));
        other.save();
        store.context.save();
        const auto rows = other.fetch({});
        QCOMPARE(eventIDs(rows), u"a b c"_s);
        QCOMPARE(rows.back().magnitude(), 4.0);
        QCOMPARE(rows.back().id(), PersistentIdentifier(3));
    }

    void knownNumbersAreFound_data()
    {
        const Table<QList<ParsedEarthquake>, QStringList> row;
        row("none known", {pageRow("x", 1000)}, {});
        row("date as stored", {pageRow("a", 1000), pageRow("x", 1000)}, {u"a"_s});
        row("date corrected by years", {pageRow("a", 900'000'000)}, {u"a"_s});
        row("pending", {pageRow("p", 1000)}, {u"p"_s});
        row("wild dates", {pageRow("a", -60'000'000'000), pageRow("b", 200'000'000'000)}, {u"a"_s, u"b"_s});
        row("other letter case", {pageRow("A", 1000)}, {});
        row("behind thousands of others", {pageRow("n4999", 5000), pageRow("n0", 90'000)}, {u"n0"_s, u"n4999"_s});
    }

    void knownNumbersAreFound()
    {
        const auto [rows, expected] = Table<QList<ParsedEarthquake>, QStringList>::current();
        StoreScene store;
        for (int i = 0; i < 5000; ++i)
            store.context.insert(testEarthquake(u"n%1"_s.arg(i), 5000 + i));
        store.save({quake("a", 1000), quake("b", 2000)});
        store.context.insert(quake("p", 1000));
        const std::unordered_set<QString> known = store.context.knownEventIDs(rows);
        QStringList found(known.begin(), known.end());
        found.sort();
        QCOMPARE(found, expected);
    }

private:
    static QStringList fields(const Earthquake &of)
    {
        QStringList texts = {of.eventID(), of.magnitudeType(), of.maxIntensity().value_or(u"none"_s), of.location()};
        for (const double number : {of.latitude(), of.longitude(), of.depth(), of.magnitude()})
            texts.append(shortestText(number));
        return texts << isoText(of.date()) << isoText(of.fetchedAt());
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
