// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/ViewModels/DateFilter.h"
#include "Core/ViewModels/MagnitudeFilter.h"
#include "Support/Table.h"
#include "Support/World.h"

#include <QTest>

#include <limits>

using namespace std::chrono_literals;

class CategoriesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lowerBoundsBelongToTheirBand_data()
    {
        const Table<double, QString, QString> row;
        row("below zero", -0.5, "micro", "Micro");
        row("just below 2", 1.9999, "micro", "Micro");
        row("2", 2.0, "low", "Minor");
        row("just below 4", 3.9999, "low", "Minor");
        row("4", 4.0, "moderate", "Moderate");
        row("just below 6", 5.9999, "moderate", "Moderate");
        row("6", 6.0, "strong", "Strong");
        row("just below 7", 6.9999, "strong", "Strong");
        row("7", 7.0, "major", "Major");
        row("no number", std::numeric_limits<double>::quiet_NaN(), "major", "Major");
    }

    void lowerBoundsBelongToTheirBand()
    {
        const auto [magnitude, saved, filterLabel] = Table<double, QString, QString>::current();
        const MagnitudeCategory category = MagnitudeCategory::from(magnitude);
        QCOMPARE(category.rawValue(), saved);
        QVERIFY(MagnitudeCategory::fromRawValue(saved) == category);
        const auto filter = MagnitudeFilter::fromRawValue(saved);
        QVERIFY(filter && filter->category() == category);
        QCOMPARE(filter->localizedLabel(), filterLabel);
    }

    void allIsNoCategory()
    {
        const auto filter = MagnitudeFilter::fromRawValue(u"all");
        QVERIFY(filter && !filter->category());
        QCOMPARE(filter->localizedLabel(), QStringLiteral("All"));
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
        // The window rolls: it is reckoned anew at each reading.
        world.clock.advance(90s);
        const std::optional<Instant> cutoff = filter->cutoffDate();
        QCOMPARE(cutoff ? (world.clock.now() - *cutoff) / 1s : -1, secondsBack);
    }
};

QTEST_GUILESS_MAIN(CategoriesTest)
#include "CategoriesTest.moc"
