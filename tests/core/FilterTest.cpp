// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/ViewModels/DateFilter.h"
#include "Core/ViewModels/MagnitudeFilter.h"
#include "Support/Table.h"
#include "Support/World.h"

#include <QTest>

using namespace std::chrono_literals;

class FilterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void magnitudeChoicesAsTheyAreSavedAndShown_data()
    {
        const Table<QString, QString, int> row;
        row.unnamed("all", "All", -1);
        row.unnamed("micro", "Micro", 0);
        row.unnamed("low", "Minor", 1);
        row.unnamed("moderate", "Moderate", 2);
        row.unnamed("strong", "Strong", 3);
        row.unnamed("major", "Major", 4);
    }

    void magnitudeChoicesAsTheyAreSavedAndShown()
    {
        const auto [rawValue, label, category] = Table<QString, QString, int>::current();
        const std::optional<MagnitudeFilter> filter = MagnitudeFilter::fromRawValue(rawValue);
        QVERIFY(filter);
        QCOMPARE(filter->id(), rawValue);
        QCOMPARE(filter->localizedLabel(), label);
        QCOMPARE(filter->category() ? int(filter->category()->band()) : -1, category);
    }

    void dateChoicesReachBackFromNow_data()
    {
        const Table<QString, QString, qint64> row;
        row.unnamed("all", "All", -1);
        row.unnamed("lastHour", "Last hour", 3600);
        row.unnamed("last24h", "Last 24h", 86400);
        row.unnamed("last7d", "Last 7 days", 604800);
        row.unnamed("last30d", "Last 30 days", 2592000);
    }

    void dateChoicesReachBackFromNow()
    {
        const auto [rawValue, label, secondsBack] = Table<QString, QString, qint64>::current();
        World world;
        const std::optional<DateFilter> filter = DateFilter::fromRawValue(rawValue);
        QVERIFY(filter);
        QCOMPARE(filter->localizedLabel(), label);
        const auto reach = [&] {
            const std::optional<Instant> cutoff = filter->cutoffDate();
            return cutoff ? qint64(std::chrono::floor<std::chrono::seconds>(world.clock.now() - *cutoff).count()) : -1;
        };
        QCOMPARE(reach(), secondsBack);
        // The window rolls: it is reckoned anew at each reading.
        world.clock.advance(90s);
        QCOMPARE(reach(), secondsBack);
    }

    void unknownTextsAreNoChoice()
    {
        for (const QString &text : {QStringLiteral("All"), QStringLiteral("last24H"), QStringLiteral("all ")}) {
            QVERIFY(!MagnitudeFilter::fromRawValue(text));
            QVERIFY(!DateFilter::fromRawValue(text));
        }
    }
};

QTEST_GUILESS_MAIN(FilterTest)
#include "FilterTest.moc"
