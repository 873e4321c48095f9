// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/ViewModels/HistoricoViewModel.h"
#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"
#include "Support/Table.h"
#include "Support/TestInstant.h"
#include "Support/UserEnvironment.h"
#include "Support/World.h"

#include <QSignalSpy>
#include <QTest>

#include <SQLiteCpp/SQLiteCpp.h>

using namespace std::chrono_literals;

namespace {
/// A store and a model over it, in a zone and a locale of their own.
struct History
{
    explicit History(const QByteArray &zone = "Atlantic/Canary", const QByteArray &locale = "C.UTF-8")
        : environment(locale, zone)
    {
    }

    void store(Instant date, const QString &location = QStringLiteral("W FRONTERA.IHI"))
    {
        context.insert(Earthquake(QString::number(++events), date, 27.7, -18.0, 12.0, 1.6, QStringLiteral("mbLg"),
                                  std::nullopt, location));
    }

    /// `count` events, one a minute back from noon on 2 March 2025.
    void storeMany(int count)
    {
        for (int i = 0; i < count; ++i)
            store(instant("2025-03-02T12:00:00Z") - i * 1min);
    }

    void appear()
    {
        context.save();
        model->onAppear(context);
        model->loadAvailableYears(context);
        world.settle();
    }

    /// What another program does to the store.
    void execute(const char *statement) const
    {
        SQLite::Database(path.toStdString(), SQLite::OPEN_READWRITE).exec(statement);
    }

    UserEnvironment environment;
    World world;
    QString path = world.folder.filePath(QStringLiteral("store.sqlite"));
    ModelContainer container{{.path = path}};
    ModelContext &context = container.mainContext();
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
        for (const Instant date : {begin - 1s, begin, end, end + 1s})
            history.store(date);
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
        for (const char *iso :
             {"2025-05-01T09:59:59Z", "2025-05-01T10:00:00Z", "2025-05-02T10:00:00Z", "2025-05-02T10:00:01Z"})
            history.store(instant(iso));
        history.appear();
        const Instant start = instant("2025-05-01T10:00:00Z");
        history.model->applyFilter(HistoricoViewModel::CustomRange{start, start + 24h});
        QCOMPARE(history.model->totalCount(), 2);
        history.model->applyFilter(HistoricoViewModel::CustomRange{start, start});
        QCOMPARE(history.model->loadedEarthquakes().size(), 1U);
        history.model->applyFilter(HistoricoViewModel::CustomRange{start + 1s, start + 2s});
        QVERIFY(!history.model->navSubtitle());
        history.model->applyFilter(HistoricoViewModel::None{});
        QCOMPARE(history.model->totalCount(), 4);
    }

    void pagesHoldFifty()
    {
        History history;
        history.storeMany(100);
        history.appear();
        const HistoricoViewModel &model = *history.model;
        QVERIFY(model.loadedEarthquakes().size() == 50 && model.hasMore());
        history.model->loadMore();
        QVERIFY(model.loadedEarthquakes().size() == 100 && !model.hasMore());
        history.model->loadMore();
        QCOMPARE(model.loadedEarthquakes().size(), 100U);
        QCOMPARE(model.totalCount(), 100);
    }

    void loadingIsToldInOrder()
    {
        History history;
        history.storeMany(1);
        QStringList told;
        HistoricoViewModel &model = *history.model;
        connect(&model, &HistoricoViewModel::loadedEarthquakesChanged,
                [&] { told << QStringLiteral("loaded %1").arg(model.loadedEarthquakes().size()); });
        connect(&model, &HistoricoViewModel::totalCountChanged,
                [&] { told << QStringLiteral("total %1").arg(model.totalCount()); });
        connect(&model, &HistoricoViewModel::isLoadingChanged,
                [&] { told << QStringLiteral("loading %1").arg(model.isLoading()); });
        model.applyFilter(HistoricoViewModel::None{});
        QVERIFY2(told.isEmpty(), "nothing loads before the screen appears");
        history.appear();
        const QStringList expected{QStringLiteral("loaded 0"), QStringLiteral("total 0"),  QStringLiteral("loading 1"),
                                   QStringLiteral("total 1"),  QStringLiteral("loaded 1"), QStringLiteral("loading 0")};
        QCOMPARE(told, expected);
    }

    void noSecondPageWhileOneLoads()
    {
        History history;
        history.storeMany(200);
        history.appear();
        HistoricoViewModel &model = *history.model;
        const auto again = connect(&model, &HistoricoViewModel::isLoadingChanged, [&] {
            if (model.isLoading())
                model.loadMore();
        });
        model.loadMore();
        disconnect(again);
        QCOMPARE(model.loadedEarthquakes().size(), 100U);
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
        QVERIFY(!history.model->navSubtitle());
        for (const char *iso :
             {"2025-03-01T00:00:00Z", "2025-02-28T23:59:59Z", "2025-02-01T00:00:00Z", "2024-01-01T00:00:00Z"})
            history.store(instant(iso));
        history.appear();
        QStringList sections;
        for (const auto &section : history.model->sections()) {
            QCOMPARE(section.title, section.id);
            sections << QStringLiteral("%1:%2").arg(section.id).arg(section.items.size());
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
        for (const char *iso :
             {"2026-01-05T00:00:00Z", "2018-06-01T00:00:00Z", "2018-05-01T00:00:00Z", "2017-05-01T00:00:00Z"})
            history.store(instant(iso));
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
        history.store(instant("2025-03-01T10:00:00Z"), QStringLiteral("ATLÁNTICO-CANARIAS"));
        history.store(instant("2025-03-01T09:00:00Z"), QStringLiteral("N GÁLDAR.IGC"));
        history.appear();
        HistoricoViewModel &model = *history.model;
        model.setSearchText(QStringLiteral(" galdar\t"));
        history.world.clock.advance(299ms);
        QCOMPARE(model.sections().front().items.size(), 2U);
        history.world.clock.advance(1ms);
        QCOMPARE(model.sections().front().items.size(), 1U);
        QCOMPARE(model.sections().front().items.front().location(), QStringLiteral("N GÁLDAR.IGC"));
        model.setSearchText(QStringLiteral("nowhere"));
        history.world.clock.advance(300ms);
        QVERIFY(model.sections().empty());
        QCOMPARE(model.totalCount(), 2);
        QVERIFY(model.navSubtitle());
    }

    void modelThatIsGoneLoadsNothing()
    {
        History history;
        history.storeMany(1);
        history.context.save();
        history.model->onAppear(history.context);
        history.model->setSearchText(QStringLiteral("x"));
        history.model.reset();
        history.world.clock.advance(1s);
        history.world.settle();
    }
};

QTEST_GUILESS_MAIN(HistoricoViewModelTest)
#include "HistoricoViewModelTest.moc"
