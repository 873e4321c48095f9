// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/ViewModels/HistoricoViewModel.h"
#include "StoreScene.h"
#include "Support/Table.h"
#include "Support/TestInstant.h"
#include "Support/UserEnvironment.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {
/// A store and a model over it, in a zone and a locale of their own.
struct History : StoreScene
{
    explicit History(const QByteArray &zone = "Atlantic/Canary", const QByteArray &locale = "C.UTF-8")
        : environment(locale, zone)
    {
    }

    void store(std::initializer_list<Instant> dates)
    {
        for (const Instant date : dates) {
            const QString place = ++events % 2 == 0 ? u"N GÁLDAR.IGC"_s : u"ATLÁNTICO-CANARIAS"_s;
            context.insert(testEarthquake(QString::number(events), date.time_since_epoch() / 1s, 1.6, place));
        }
    }

    void store(std::initializer_list<const char *> dates)
    {
        for (const char *date : dates)
            store({instant(date)});
    }

    /// `count` events, one a minute back from noon on 2 March 2025.
    void storeMany(int count)
    {
        for (int i = 0; i < count; ++i)
            store({instant("2025-03-02T12:00:00Z") - i * 1min});
    }

    void appear()
    {
        context.save();
        model->onAppear(context);
        model->loadAvailableYears(context);
        world.settle();
    }

    UserEnvironment environment;
    std::optional<HistoricoViewModel> model{std::in_place};
    int events = 0;
};
}

class HistoricoViewModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void periodsAreTheUsersOwn_data()
    {
        const Table<QByteArray, QByteArray, int, int, QByteArray, QByteArray> row;
        row("month", "UTC", "C.UTF-8", 2025, 2, "2025-02-01T00:00:00Z", "2025-02-28T23:59:59Z");
        row("december", "UTC", "C.UTF-8", 2025, 12, "2025-12-01T00:00:00Z", "2025-12-31T23:59:59Z");
        row("year", "UTC", "C.UTF-8", 2025, 0, "2025-01-01T00:00:00Z", "2025-12-31T23:59:59Z");
        row("clock goes back", "Atlantic/Canary", "es_ES.UTF-8", 2025, 10, "2025-09-30T23:00:00Z",
            "2025-10-31T23:59:59Z");
        row("year, far west", "Pacific/Pago_Pago", "C.UTF-8", 2025, 0, "2025-01-01T11:00:00Z", "2026-01-01T10:59:59Z");
        row("another calendar", "UTC", "fa_IR.UTF-8", 1403, 0, "2024-03-20T00:00:00Z", "2025-03-20T23:59:59Z");
    }

    void periodsAreTheUsersOwn()
    {
        const auto [zone, locale, year, month, first, last] =
            Table<QByteArray, QByteArray, int, int, QByteArray, QByteArray>::current();
        History history(zone, locale);
        const Instant begin = instant(first.constData());
        const Instant end = instant(last.constData());
        history.store({begin - 1s, begin, end, end + 1s});
        history.appear();
        history.model->applyFilter(
            HistoricoViewModel::YearMonth{year, month == 0 ? std::nullopt : std::optional(month)});
        const auto &loaded = history.model->loadedEarthquakes();
        QCOMPARE(history.model->totalCount(), 2);
        QCOMPARE(loaded.size(), 2U);
        QVERIFY(loaded.front().date() == end);
        QVERIFY(loaded.back().date() == begin);
    }

    void rangesIncludeBothEndsAsTheyStand()
    {
        History history;
        const Instant start = instant("2025-05-01T10:00:00Z");
        history.store({start - 1s, start, start + 24h, start + 24h + 1s});
        history.appear();
        history.model->applyFilter(HistoricoViewModel::CustomRange{start, start + 24h});
        QCOMPARE(history.model->totalCount(), 2);
        history.model->applyFilter(HistoricoViewModel::CustomRange{start, start});
        QCOMPARE(history.model->loadedEarthquakes().size(), 1U);
        history.model->applyFilter(HistoricoViewModel::CustomRange{start + 1s, start + 2s});
        QVERIFY(!history.model->navSubtitle());
        history.model->applyFilter(HistoricoViewModel::None{});
        QCOMPARE(history.model->totalCount(), 4);
    }

    void pagesHoldFiftyAndComeOneAtATime()
    {
        History history;
        history.storeMany(150);
        history.appear();
        HistoricoViewModel &model = *history.model;
        QVERIFY(model.loadedEarthquakes().size() == 50 && model.hasMore());
        connect(&model, &HistoricoViewModel::isLoadingChanged, [&] {
            if (model.isLoading())
                model.loadMore();
        });
        model.loadMore();
        QVERIFY(model.loadedEarthquakes().size() == 100 && model.hasMore());
        model.loadMore();
        QVERIFY(model.loadedEarthquakes().size() == 150 && !model.hasMore());
        model.loadMore();
        QCOMPARE(model.loadedEarthquakes().size(), 150U);
        QCOMPARE(model.totalCount(), 150);
    }

    void sectionsAreMonthsInWords_data()
    {
        const Table<QByteArray, QByteArray, QString, QString, QString> row;
        row("Spanish", "Atlantic/Canary", "es_ES.UTF-8", "Marzo 2025:1 Febrero 2025:2 Enero 2024:1", "2025 2024",
            "Data up to 1 mar 2025");
        row("far west", "Pacific/Pago_Pago", "en_GB.UTF-8", "February 2025:2 January 2025:1 December 2023:1",
            "2025 2023", "Data up to 28 Feb 2025");
        row("another calendar", "UTC", "fa_IR.UTF-8", "اسفند ۱۴۰۳:2 بهمن ۱۴۰۳:1 دی ۱۴۰۲:1", "1403 1402",
            "Data up to ۱۱ اسفند ۱۴۰۳");
    }

    void sectionsAreMonthsInWords()
    {
        const auto [zone, locale, expectedSections, expectedYears, expectedSubtitle] =
            Table<QByteArray, QByteArray, QString, QString, QString>::current();
        History history(zone, locale);
        history.store({"2025-03-01T00:00:00Z", "2025-02-28T23:59:59Z", "2025-02-01T00:00:00Z", "2024-01-01T00:00:00Z"});
        history.appear();
        QStringList sections;
        for (const auto &section : history.model->sections()) {
            QCOMPARE(section.title, section.id);
            sections << u"%1:%2"_s.arg(section.id).arg(section.items.size());
        }
        QCOMPARE(sections.join(u' '), expectedSections);
        QCOMPARE(history.model->navSubtitle().value_or(QString()), expectedSubtitle);
        QStringList years;
        for (const int year : history.model->availableYears())
            years << QString::number(year);
        QCOMPARE(years.join(u' '), expectedYears);
    }

    void yearsOfAnEraThatHasEndedAreListed()
    {
        History history("Asia/Tokyo", "ja_JP@calendar=japanese");
        history.store({"2026-01-05T00:00:00Z", "2018-06-01T00:00:00Z", "2018-05-01T00:00:00Z", "2017-05-01T00:00:00Z"});
        history.appear();
        QCOMPARE(history.model->availableYears(), (std::vector<int>{30, 29, 8}));
    }

    void readsThatFailLeaveWhatThereIs()
    {
        History history;
        history.storeMany(120);
        history.appear();
        HistoricoViewModel &model = *history.model;
        history.execute("ALTER TABLE earthquake RENAME TO away");
        model.loadMore();
        QCOMPARE(model.loadedEarthquakes().size(), 50U);
        QVERIFY(model.hasMore() && !model.isLoading());
        history.appear();
        QVERIFY(model.loadedEarthquakes().empty() && model.availableYears().empty());
        QVERIFY(!model.hasMore() && !model.isLoading());
        history.execute("ALTER TABLE away RENAME TO earthquake");
        model.loadMore();
        QVERIFY(model.loadedEarthquakes().empty());
        history.appear();
        QCOMPARE(model.loadedEarthquakes().size(), 50U);
        QCOMPARE(model.totalCount(), 120);
    }

    void searchRestsBeforeItFilters()
    {
        History history;
        history.storeMany(2);
        history.appear();
        HistoricoViewModel &model = *history.model;
        model.setSearchText(u" galdar\t"_s);
        history.world.clock.advance(299ms);
        QCOMPARE(model.sections().front().items.size(), 2U);
        history.world.clock.advance(1ms);
        QCOMPARE(model.sections().front().items.size(), 1U);
        QCOMPARE(model.sections().front().items.front().location(), u"N GÁLDAR.IGC"_s);
        model.setSearchText(u"nowhere"_s);
        history.world.clock.advance(300ms);
        QVERIFY(model.sections().empty());
        QCOMPARE(model.totalCount(), 2);
        QVERIFY(model.navSubtitle());
        // Gone before the search has rested, or the first page is loaded.
        model.setSearchText(u"x"_s);
        model.onAppear(history.context);
        history.model.reset();
        history.world.clock.advance(1s);
        history.world.settle();
    }
};

QTEST_GUILESS_MAIN(HistoricoViewModelTest)
#include "HistoricoViewModelTest.moc"
