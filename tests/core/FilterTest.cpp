// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/ViewModels/DateFilter.h"
#include "Core/ViewModels/MagnitudeFilter.h"
#include "Support/World.h"

#include <QTest>

using namespace std::chrono_literals;

class FilterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void magnitudeChoicesAsTheyAreSavedAndShown_data()
    {
        QTest::addColumn<QString>("rawValue");
        QTest::addColumn<QString>("label");
        QTest::addColumn<int>("category");
        const auto row = [](const char *rawValue, const char *label, int category) {
            QTest::newRow(rawValue) << QString::fromLatin1(rawValue) << QString::fromLatin1(label) << category;
        };
        row("all", "All", -1);
        row("micro", "Micro", 0);
        row("low", "Minor", 1);
        row("moderate", "Moderate", 2);
        row("strong", "Strong", 3);
        row("major", "Major", 4);
    }

    void magnitudeChoicesAsTheyAreSavedAndShown()
    {
        QFETCH(QString, rawValue);
        QFETCH(int, category);
        const std::optional<MagnitudeFilter> filter = MagnitudeFilter::fromRawValue(rawValue);
        QVERIFY(filter);
        QCOMPARE(filter->id(), rawValue);
        QTEST(filter->localizedLabel(), "label");
        QCOMPARE(filter->category() ? int(filter->category()->band()) : -1, category);
    }

    void dateChoicesReachBackFromNow_data()
    {
        QTest::addColumn<QString>("rawValue");
        QTest::addColumn<QString>("label");
        QTest::addColumn<qint64>("secondsBack");
        const auto row = [](const char *rawValue, const char *label, qint64 secondsBack) {
            QTest::newRow(rawValue) << QString::fromLatin1(rawValue) << QString::fromLatin1(label) << secondsBack;
        };
        row("all", "All", -1);
        row("lastHour", "Last hour", 3600);
        row("last24h", "Last 24h", 86400);
        row("last7d", "Last 7 days", 604800);
        row("last30d", "Last 30 days", 2592000);
    }

    void dateChoicesReachBackFromNow()
    {
        QFETCH(QString, rawValue);
        QFETCH(qint64, secondsBack);
        World world;
        const std::optional<DateFilter> filter = DateFilter::fromRawValue(rawValue);
        QVERIFY(filter);
        QTEST(filter->localizedLabel(), "label");
        const auto reach = [&] {
            const std::optional<Instant> cutoff = filter->cutoffDate();
            return cutoff ? qint64(std::chrono::floor<std::chrono::seconds>(world.clock.now() - *cutoff).count()) : -1;
        };
        QCOMPARE(reach(), secondsBack);
        // The window rolls: it is reckoned anew at each reading.
        world.clock.advance(90s);
        QCOMPARE(reach(), secondsBack);
    }

    void unknownTextsAreNoChoice_data()
    {
        QTest::addColumn<QString>("text");
        for (const char *text : {"", "All", "minor", "last24H", "24h", "all "})
            QTest::newRow(text) << QString::fromLatin1(text);
    }

    void unknownTextsAreNoChoice()
    {
        QFETCH(QString, text);
        QVERIFY(!MagnitudeFilter::fromRawValue(text));
        QVERIFY(!DateFilter::fromRawValue(text));
    }
};

QTEST_GUILESS_MAIN(FilterTest)
#include "FilterTest.moc"
