// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/ModelContext.h"
#include "Core/Persistence/ModelContainer.h"
#include "Support/TestEarthquake.h"
#include "Support/TestInstant.h"
#include "Support/World.h"

#include <QFileInfo>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <limits>

#include <sys/resource.h>

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
    ParsedEarthquake row;
    row.eventID = QString::fromLatin1(eventID);
    row.date = at(second);
    return row;
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

/// Lets no file of this process grow beyond `bytes`, as a full disk would, until it goes out of scope.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(qint64 bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{rlim_t(bytes), m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &m_before); }
    Q_DISABLE_COPY_MOVE(FileSizeLimit)

private:
    rlimit m_before{};
};
}

class ModelContextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyValueComesBack_data()
    {
        QTest::addColumn<Earthquake>("saved");
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const double infinity = std::numeric_limits<double>::infinity();
        const QString text = QString::fromUtf8("Ñandú “β” 🌋");
        const QString withNul = QStringLiteral("a\0b").append(QChar(0)).append(QLatin1Char('c'));
        const Instant now = instant("2025-03-30T00:59:59.999Z");
        const Instant old = instant("1907-01-18T03:04:05Z");
        QTest::newRow("plain") << Earthquake(QStringLiteral("es2025abcde"), now, 28.5, -16.25, 12, 3.75,
                                             QStringLiteral("mbLg"), QStringLiteral("III-IV"), text, old);
        QTest::newRow("before 1970") << Earthquake(QStringLiteral("x"), old, 0, 0, 0, 0, text, {}, text, old);
        QTest::newRow("nothing in the texts")
            << Earthquake(QString(), now, -90, 180, -3.5, -0.4, QString(), QString(QLatin1String("")), QString(), now);
        QTest::newRow("no numbers") << Earthquake(text, now, nan, nan, infinity, -infinity, text, text, text, now);
        QTest::newRow("text goes on after NUL") << Earthquake(withNul, now, 1, 2, 3, 4, withNul, withNul, withNul, now);
        const QString longText(100000, QLatin1Char('x'));
        QTest::newRow("long") << Earthquake(longText, now, 1, 2, 3, 1e300, longText, longText, longText, now);
    }

    void everyValueComesBack()
    {
        QFETCH(Earthquake, saved);
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
        const Earthquake &read = rows.front();
        QCOMPARE(read.eventID(), saved.eventID());
        QVERIFY(read.date() == saved.date());
        QVERIFY(sameNumber(read.latitude(), saved.latitude()));
        QVERIFY(sameNumber(read.longitude(), saved.longitude()));
        QVERIFY(sameNumber(read.depth(), saved.depth()));
        QVERIFY(sameNumber(read.magnitude(), saved.magnitude()));
        QCOMPARE(read.magnitudeType(), saved.magnitudeType());
        QCOMPARE(read.maxIntensity(), saved.maxIntensity());
        QCOMPARE(read.location(), saved.location());
        QVERIFY(read.fetchedAt() == saved.fetchedAt());
    }

    void fetchesAgreeWithAListOfAll_data()
    {
        QTest::addColumn<QString>("pending");
        QTest::newRow("nothing pending") << "";
        QTest::newRow("newest") << "9";
        QTest::newRow("oldest") << "0";
        QTest::newRow("between and twice the same") << "4 4 2";
        QTest::newRow("more than are stored") << "1 2 3 4 5 6 7 8 9";
    }

    void fetchesAgreeWithAListOfAll()
    {
        QFETCH(QString, pending);
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

    void anEventSeenWhilePendingKeepsItsIdentity()
    {
        Store store;
        store.context.insert(quake("a", 1));
        const PersistentIdentifier seen = store.context.fetch({}).front().id();
        store.save({quake("b", 2)});
        QCOMPARE(store.context.fetch({}).at(0).id(), seen);
        QCOMPARE(store.context.fetch({}).at(1).id(), PersistentIdentifier(2));
        QCOMPARE(ModelContext(store.container).fetch({}).at(0).id(), seen);
        const Earthquake again = quake("a", 3);
        store.save({again});
        QCOMPARE(again.id(), seen);
        QCOMPARE(store.context.fetch({}).at(0).id(), seen);
    }

    void eachRowOfASaveIsToldOnce()
    {
        Store store;
        QStringList told;
        connect(&store.container, &ModelContainer::didSave,
                [&](const std::vector<Earthquake> &inserted, const std::vector<Earthquake> &replaced) {
                    QVERIFY(!store.context.hasChanges());
                    told.append(eventIDs(inserted) + QLatin1Char('/') + eventIDs(replaced));
                });
        store.save({quake("a", 1), quake("b", 2)});
        store.save({quake("c", 3), quake("a", 4), quake("c", 5), quake("a", 6)});
        store.save({});
        QCOMPARE(told, (QStringList{QStringLiteral("a b/"), QStringLiteral("c/a")}));
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

    void aFullDiskLosesNothing()
    {
        Store store;
        store.save({quake("a", 1)});
        QStringList page;
        for (int i = 0; i < 60; ++i) {
            page.append(QStringLiteral("p%1").arg(i));
            store.context.insert(testEarthquake(page.back(), 10 + i, 2.5, QString(200, QLatin1Char('x'))));
        }
        const qint64 log = QFileInfo(store.path + QStringLiteral("-wal")).size();
        int failures = 0;
        for (qint64 room = 0; store.context.hasChanges(); room += 1500) {
            const FileSizeLimit limit(log + room);
            try {
                store.context.save();
            } catch (const StoreError &error) {
                ++failures;
                QVERIFY(QString::fromUtf8(error.what()).contains(store.path));
                QCOMPARE(eventIDs(ModelContext(store.container).fetch({})), QStringLiteral("a"));
                QCOMPARE(store.context.fetchCount({}), qint64(61));
            }
        }
        QVERIFY(failures > 5);
        page.prepend(QStringLiteral("a"));
        QCOMPARE(eventIDs(ModelContext(store.container).fetch({})), page.join(QLatin1Char(' ')));
    }

    void knownNumbersAreFound_data()
    {
        QTest::addColumn<QList<ParsedEarthquake>>("rows");
        QTest::addColumn<QString>("known");
        using Rows = QList<ParsedEarthquake>;
        QTest::newRow("none asked") << Rows{} << "";
        QTest::newRow("none known") << Rows{pageRow("x", 1000)} << "";
        QTest::newRow("date as stored") << Rows{pageRow("a", 1000), pageRow("x", 1000)} << "a";
        QTest::newRow("date corrected by years") << Rows{pageRow("a", 900'000'000)} << "a";
        QTest::newRow("pending") << Rows{pageRow("p", 1000)} << "p";
        QTest::newRow("twice in the page") << Rows{pageRow("a", 1000), pageRow("a", 1001)} << "a";
        QTest::newRow("wild dates") << Rows{pageRow("a", -60'000'000'000), pageRow("b", 200'000'000'000)} << "a b";
        QTest::newRow("other letter case") << Rows{pageRow("A", 1000)} << "";
        QTest::newRow("behind thousands of others")
            << Rows{pageRow("n4999", 5000), pageRow("n0", 90'000)} << "n0 n4999";
    }

    void knownNumbersAreFound()
    {
        QFETCH(QList<ParsedEarthquake>, rows);
        Store store;
        for (int i = 0; i < 5000; ++i)
            store.context.insert(testEarthquake(QStringLiteral("n%1").arg(i), 5000 + i));
        store.save({quake("a", 1000), quake("b", 2000)});
        store.context.insert(quake("p", 1000));
        QTEST(sorted(store.context.knownEventIDs(rows)), "known");
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
    static bool sameNumber(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

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
