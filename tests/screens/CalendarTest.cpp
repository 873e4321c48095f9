// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/Table.h"
#include "Support/TestInstant.h"
#include "Support/UserEnvironment.h"
#include "Support/World.h"
#include "iOS/Shared/CalendarDays.h"
#include "iOS/Shared/CalendarModel.h"
#include "iOS/Shared/InstantDate.h"

#include <QAbstractItemModelTester>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
Instant noonOf(const QByteArray &day)
{
    return instant((day + "T12:00:00Z").constData());
}

/// A model in Spain that shows the month of `day`.
struct Shown
{
    explicit Shown(const char *day)
    {
        model.setSelected(dateOf(noonOf(day)));
        model.showSelected();
    }

    /// Day by day, "[30] 31 | 1 2": other months in brackets, days out of bounds as "x".
    QString days() const
    {
        QStringList days;
        for (int row = 0; row < model.rowCount(); ++row) {
            const auto value = [&](int role) { return model.data(model.index(row), role); };
            const QString day =
                value(CalendarModel::EnabledRole).toBool() ? value(CalendarModel::TextRole).toString() : u"x"_s;
            days.append(value(CalendarModel::InMonthRole).toBool() ? day : u"[%1]"_s.arg(day));
        }
        return days.join(u' ');
    }

    UserEnvironment user{"es_ES.UTF-8", "Atlantic/Canary"};
    World world;
    CalendarModel model;
};
}

class CalendarTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void daysAndMonthsAreCounted_data()
    {
        Table<QByteArray, int, int, QString> row;
        // In the islands the clock of 2025 changes on 30 March and 26 October; the day begins an hour earlier in
        // summer.
        row("into summer", "2025-03-29", 0, 2, "2025-03-30T23:00:00Z");
        row("back out of summer", "2025-03-31", 0, -2, "2025-03-29T00:00:00Z");
        row("into winter", "2025-10-25", 0, 2, "2025-10-27T00:00:00Z");
        row("over a year's end", "2025-12-30", 0, 3, "2026-01-02T00:00:00Z");
        row("31 January to February", "2025-01-31", 1, 0, "2025-02-28T00:00:00Z");
        row("31 January to a leap year's February", "2025-01-31", 37, 0, "2028-02-29T00:00:00Z");
        row("15 January back", "2025-01-15", -1, 0, "2024-12-15T00:00:00Z");
        row("31 January back to November", "2025-01-31", -2, 0, "2024-11-30T00:00:00Z");
    }

    void daysAndMonthsAreCounted()
    {
        const auto [day, months, days, result] = Table<QByteArray, int, int, QString>::current();
        QCOMPARE(isoText(CalendarDays::moved(CalendarDays::movedByMonths(noonOf(day), months), days)), result);
    }

    void weeksBeginByTheLocale()
    {
        // A Sunday: in Egypt the second day of the week.
        for (const auto &[locale, place] : {std::pair("es_ES.UTF-8", 6), {"en_US.UTF-8", 0}, {"ar_EG.UTF-8", 1}}) {
            const UserEnvironment user(locale, "Atlantic/Canary");
            QCOMPARE(CalendarDays::placeInWeek(noonOf("2026-11-22")), place);
        }
    }

    void aMonthShowsWholeWeeksAndTheCursorMovesThroughThem()
    {
        Shown shown("2021-09-19");
        CalendarModel &model = shown.model;
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(model.title(), u"Septiembre 2021"_s);
        QCOMPARE(model.selectedText(), u"19 sept 2021"_s);
        QCOMPARE(shown.days(),
                 u"[30] [31] 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21 22 23 24 25 26 27 28 "
                 "29 30 [1] [2] [3]"_s);
        QCOMPARE(model.cursorRow(), 20);
        model.moveToWeekStart();
        QCOMPARE(model.cursorRow(), 14);
        model.moveToWeekEnd();
        QCOMPARE(model.cursorRow(), 20);
        model.moveByDays(12);
        QCOMPARE(model.title(), u"Octubre 2021"_s);
        QCOMPARE(model.cursorRow(), 4);
        model.moveByMonths(-2);
        QCOMPARE(model.title(), u"Agosto 2021"_s);
    }

    void boundsHoldToTheDay()
    {
        Shown shown("2021-02-10");
        CalendarModel &model = shown.model;
        model.setMinimum(dateOf(noonOf("2021-02-03")));
        model.setMaximum(dateOf(noonOf("2021-02-12")));
        QCOMPARE(shown.days(), u"x x 3 4 5 6 7 8 9 10 11 12 x x x x x x x x x x x x x x x x"_s);
        for (const int outside : {-1, 1, 12})
            QVERIFY(!model.moment(outside).isValid());
        model.moveByDays(-30);
        QCOMPARE(model.cursorRow(), 2);
        model.moveByMonths(4);
        QCOMPARE(model.cursorRow(), 11);
    }

    void typedDaysAreReadInTheLocalesOrderAndKeepTheTimeOfDay_data()
    {
        Table<QByteArray, QByteArray, QString, QString> row;
        const QByteArray noon("2025-01-01T12:00:00Z");
        row("Spain", "es_ES.UTF-8", noon, "3/11/2021", "2021-11-03T12:00:00Z");
        row("United States", "en_US.UTF-8", noon, "3/11/2021", "2021-03-11T12:00:00Z");
        row("year first anywhere", "en_US.UTF-8", noon, "2021-11-03", "2021-11-03T12:00:00Z");
        row("this century", "es_ES.UTF-8", noon, "3.11.21", "2021-11-03T12:00:00Z");
        row("leap day", "es_ES.UTF-8", noon, "29/2/2024", "2024-02-29T12:00:00Z");
        row("no leap day", "es_ES.UTF-8", noon, "29/2/2023", "");
        row("day nought", "es_ES.UTF-8", noon, "0/1/2023", "");
        row("two parts", "es_ES.UTF-8", noon, "1/2", "");
        row("four parts", "es_ES.UTF-8", noon, "1/2/2023 4", "");
        row("three digits of a year", "es_ES.UTF-8", noon, "1/2/202", "");
        // Bounds: 5 March 2021, 10:00:00.500, to 26 October 2026, 20:00.
        row("to the millisecond", "C.UTF-8", "2025-05-01T13:07:09.123Z", "2025-06-30", "2025-06-30T13:07:09.123Z");
        row("summer to winter", "C.UTF-8", "2025-05-01T13:07:09Z", "2025-12-01", "2025-12-01T14:07:09Z");
        row("time that the clock skips", "C.UTF-8", "2025-05-01T00:30:00Z", "2025-03-30", "2025-03-30T01:00:00Z");
        row("time that strikes twice", "C.UTF-8", "2025-05-01T00:30:00Z", "2025-10-26", "2025-10-26T00:30:00Z");
        row("too early on the first day", "C.UTF-8", "2025-05-01T08:00:00Z", "2021-03-05", "2021-03-05T10:00:00.500Z");
        row("too late on the last day", "C.UTF-8", "2025-05-01T21:00:00Z", "2026-10-26", "2026-10-26T20:00:00Z");
        row("before the first day", "C.UTF-8", "2025-05-01T21:00:00Z", "2021-03-04", "");
        row("after the last day", "C.UTF-8", "2025-05-01T08:00:00Z", "2026-10-27", "");
    }

    void typedDaysAreReadInTheLocalesOrderAndKeepTheTimeOfDay()
    {
        const auto [locale, selected, typed, expected] = Table<QByteArray, QByteArray, QString, QString>::current();
        const UserEnvironment user(locale, "Atlantic/Canary");
        World world;
        CalendarModel model;
        model.setMinimum(dateOf(instant("2021-03-05T10:00:00.500Z")));
        model.setMaximum(dateOf(instant("2026-10-26T20:00:00Z")));
        model.setSelected(dateOf(instant(selected.constData())));
        const QDateTime moment = model.momentOf(typed);
        QCOMPARE(moment.isValid() ? isoText(instantOf(moment)) : QString(), expected);
    }
};

QTEST_GUILESS_MAIN(CalendarTest)
#include "CalendarTest.moc"
