// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Text/DateFormatter.h"
#include "Support/Table.h"
#include "Support/TestInstant.h"
#include "Support/World.h"
#include "iOS/Shared/CalendarDays.h"
#include "iOS/Shared/CalendarModel.h"
#include "iOS/Shared/InstantDate.h"

#include <QAbstractItemModelTester>
#include <QTest>

using namespace std::chrono_literals;

namespace {
/// Noon in the islands, or close to it.
Instant noonOf(int year, unsigned month, unsigned day)
{
    return std::chrono::sys_days{std::chrono::year{year} / std::chrono::month{month} / std::chrono::day{day}} + 12h;
}

QString isoDay(Instant instant)
{
    return DateFormatter(DateFormatter::Form::pattern, QStringLiteral("yyyy-MM-dd HH:mm")).string(instant);
}

void useLocale(const char *name)
{
    qputenv("LC_ALL", name);
    reloadUserLocale();
}

/// What the model shows, day by day: "[30] 31 | 1 2": other months in brackets, days out of bounds as "x".
QString shown(const CalendarModel &model)
{
    QStringList days;
    for (int row = 0; row < model.rowCount(); ++row) {
        const auto value = [&](int role) { return model.data(model.index(row), role); };
        QString day = value(CalendarModel::TextRole).toString();
        if (!value(CalendarModel::EnabledRole).toBool())
            day = QStringLiteral("x");
        days.append(value(CalendarModel::InMonthRole).toBool() ? day : QStringLiteral("[%1]").arg(day));
    }
    return days.join(u' ');
}
}

class CalendarTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { useLocale("C.UTF-8"); }

    void daysAreCountedAcrossChangesOfTheClock_data()
    {
        Table<int, int, int, QString> row;
        // In the islands the clock of 2025 changes on 30 March and 26 October.
        row("into summer", 3, 29, 2, "2025-03-31 00:00");
        row("back out of summer", 3, 31, -2, "2025-03-29 00:00");
        row("into winter", 10, 25, 2, "2025-10-27 00:00");
        row("over a year's end", 12, 30, 3, "2026-01-02 00:00");
    }

    void daysAreCountedAcrossChangesOfTheClock()
    {
        const auto [month, day, days, result] = Table<int, int, int, QString>::current();
        QCOMPARE(isoDay(CalendarDays::moved(noonOf(2025, unsigned(month), unsigned(day)), days)), result);
    }

    void monthsKeepTheDayWhereTheyCan_data()
    {
        Table<int, int, QString> row;
        row("31 January to February", 31, 1, "2025-02-28 00:00");
        row("31 January to a leap year's February", 31, 37, "2028-02-29 00:00");
        row("15 January back", 15, -1, "2024-12-15 00:00");
        row("31 January back to November", 31, -2, "2024-11-30 00:00");
    }

    void monthsKeepTheDayWhereTheyCan()
    {
        const auto [day, months, result] = Table<int, int, QString>::current();
        QCOMPARE(isoDay(CalendarDays::movedByMonths(noonOf(2025, 1, unsigned(day)), months)), result);
    }

    void weeksBeginByTheLocale_data()
    {
        Table<QByteArray, int> row;
        // 22 November 2026 is a Sunday.
        row("Spain, Monday", "es_ES.UTF-8", 6);
        row("United States, Sunday", "en_US.UTF-8", 0);
        row("Egypt, Saturday", "ar_EG.UTF-8", 1);
    }

    void weeksBeginByTheLocale()
    {
        const auto [locale, place] = Table<QByteArray, int>::current();
        useLocale(locale.constData());
        QCOMPARE(CalendarDays::placeInWeek(noonOf(2026, 11, 22)), place);
    }

    void typedDaysAreReadInTheLocalesOrder_data()
    {
        Table<QByteArray, QString, QString> row;
        row("Spain", "es_ES.UTF-8", "3/9/2021", "2021-09-03 00:00");
        row("United States", "en_US.UTF-8", "3/9/2021", "2021-03-09 00:00");
        row("Sweden", "sv_SE.UTF-8", "2021-09-03", "2021-09-03 00:00");
        row("year first anywhere", "en_US.UTF-8", "2021-09-03", "2021-09-03 00:00");
        row("this century", "es_ES.UTF-8", "3.9.21", "2021-09-03 00:00");
        row("leap day", "es_ES.UTF-8", "29/2/2024", "2024-02-29 00:00");
        row("no leap day", "es_ES.UTF-8", "29/2/2023", "");
        row("day nought", "es_ES.UTF-8", "0/1/2023", "");
        row("two parts", "es_ES.UTF-8", "1/2", "");
        row("four parts", "es_ES.UTF-8", "1/2/2023 4", "");
        row("three digits of a year", "es_ES.UTF-8", "1/2/202", "");
        row("no number", "es_ES.UTF-8", "hoy", "");
    }

    void typedDaysAreReadInTheLocalesOrder()
    {
        const auto [locale, typed, result] = Table<QByteArray, QString, QString>::current();
        World world;
        useLocale(locale.constData());
        const auto day = CalendarDays::parsed(typed);
        useLocale("C.UTF-8");
        QCOMPARE(day ? isoDay(*day) : QString(), result);
    }

    void aMonthShowsWholeWeeks()
    {
        World world;
        useLocale("es_ES.UTF-8");
        CalendarModel model;
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setSelected(dateOf(noonOf(2021, 9, 19)));
        model.showSelected();
        QCOMPARE(model.title(), QStringLiteral("Septiembre 2021"));
        QCOMPARE(model.selectedText(), QStringLiteral("19 sept 2021"));
        QCOMPARE(shown(model),
                 QStringLiteral("[30] [31] 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21 22 23 24 25 26 27 28 "
                                "29 30 [1] [2] [3]"));
        QCOMPARE(model.cursorRow(), 20);
    }

    void boundsHoldToTheDay()
    {
        World world;
        useLocale("es_ES.UTF-8");
        CalendarModel model;
        model.setSelected(dateOf(noonOf(2021, 2, 10)));
        model.setMinimum(dateOf(noonOf(2021, 2, 3)));
        model.setMaximum(dateOf(noonOf(2021, 2, 12)));
        model.showSelected();
        QCOMPARE(shown(model), QStringLiteral("x x 3 4 5 6 7 8 9 10 11 12 x x x x x x x x x x x x x x x x"));
        QVERIFY(!model.moment(1).isValid());
        QVERIFY(!model.moment(12).isValid());
        QVERIFY(!model.moment(-1).isValid());
        model.moveByDays(-30);
        QCOMPARE(model.cursorRow(), 2);
        model.moveByMonths(4);
        QCOMPARE(model.cursorRow(), 11);
        QVERIFY(!model.momentOf(QStringLiteral("13/2/2021")).isValid());
        QVERIFY(model.momentOf(QStringLiteral("12/2/2021")).isValid());
    }

    void anotherDayKeepsTheTimeOfDay_data()
    {
        Table<QByteArray, QString, QString> row;
        // Bounds: 5 March 2025, 10:00:00.500, to 26 October 2026, 20:00.
        row("to the millisecond", "2025-05-01T13:07:09.123Z", "2025-06-30", "2025-06-30T13:07:09.123Z");
        row("summer to winter", "2025-05-01T13:07:09Z", "2025-12-01", "2025-12-01T14:07:09Z");
        row("time that the clock skips", "2025-05-01T00:30:00Z", "2025-03-30", "2025-03-30T01:00:00Z");
        row("time that strikes twice", "2025-05-01T00:30:00Z", "2025-10-26", "2025-10-26T00:30:00Z");
        row("too early on the first day", "2025-05-01T08:00:00Z", "2025-03-05", "2025-03-05T10:00:00.500Z");
        row("too late on the last day", "2025-05-01T21:00:00Z", "2026-10-26", "2026-10-26T20:00:00Z");
        row("before the first day", "2025-05-01T21:00:00Z", "2025-03-04", "");
        row("after the last day", "2025-05-01T08:00:00Z", "2026-10-27", "");
    }

    void anotherDayKeepsTheTimeOfDay()
    {
        const auto [selected, typed, expected] = Table<QByteArray, QString, QString>::current();
        World world;
        CalendarModel model;
        model.setMinimum(dateOf(instant("2025-03-05T10:00:00.500Z")));
        model.setMaximum(dateOf(instant("2026-10-26T20:00:00Z")));
        model.setSelected(dateOf(instant(selected.constData())));
        const QDateTime moment = model.momentOf(typed);
        QCOMPARE(moment.isValid() ? isoText(instantOf(moment)) : QString(), expected);
    }

    void theCursorMovesByDayWeekAndMonth()
    {
        World world;
        useLocale("es_ES.UTF-8");
        CalendarModel model;
        model.setSelected(dateOf(noonOf(2021, 9, 16)));
        model.showSelected();
        model.moveToWeekStart();
        QCOMPARE(model.cursorRow(), 14);
        model.moveToWeekEnd();
        QCOMPARE(model.cursorRow(), 20);
        model.moveByDays(12);
        QCOMPARE(model.title(), QStringLiteral("Octubre 2021"));
        QCOMPARE(model.cursorRow(), 4);
        model.moveByMonths(-2);
        QCOMPARE(model.title(), QStringLiteral("Agosto 2021"));
    }
};

QTEST_GUILESS_MAIN(CalendarTest)
#include "CalendarTest.moc"
