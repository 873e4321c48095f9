// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Text/DateFormatter.h"
#include "Support/TestInstant.h"
#include "Support/UserEnvironment.h"

#include <QTest>

#include <limits>

class UserCalendarTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void monthRunsFromItsFirstInstantToTheNextOnes_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("zone");
        QTest::addColumn<int>("year");
        QTest::addColumn<int>("month");
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("end");
        const auto row = [](const char *locale, const char *zone, int year, int month, const char *start,
                            const char *end) {
            QTest::addRow("%s %s %d-%d", locale, zone, year, month)
                << QString::fromLatin1(locale) << QString::fromLatin1(zone) << year << month
                << QString::fromLatin1(start) << QString::fromLatin1(end);
        };
        const char *none = "none";
        row("es_ES", "UTC", 2024, 2, "2024-02-01T00:00:00Z", "2024-03-01T00:00:00Z");
        row("es_ES", "UTC", 2025, 12, "2025-12-01T00:00:00Z", "2026-01-01T00:00:00Z");
        row("es_ES", "Atlantic/Canary", 2025, 3, "2025-03-01T00:00:00Z", "2025-03-31T23:00:00Z");
        row("es_ES", "Atlantic/Canary", 2025, 10, "2025-09-30T23:00:00Z", "2025-11-01T00:00:00Z");
        row("es_ES", "Pacific/Kiritimati", 2025, 1, "2024-12-31T10:00:00Z", "2025-01-31T10:00:00Z");
        row("es_ES", "Pacific/Pago_Pago", 2025, 1, "2025-01-01T11:00:00Z", "2025-02-01T11:00:00Z");
        // The clock went from 00:00 to 01:00 on the first of the month, so that it began at 01:00.
        row("es_PY", "America/Asuncion", 2017, 10, "2017-10-01T04:00:00Z", "2017-11-01T03:00:00Z");
        row("ar_JO", "Asia/Amman", 2016, 4, "2016-03-31T22:00:00Z", "2016-04-30T21:00:00Z");
        // The last of 1403 is 20 March 2025.
        row("fa_IR", "UTC", 1403, 12, "2025-02-19T00:00:00Z", "2025-03-21T00:00:00Z");
        row("th_TH", "UTC", 2568, 1, "2025-01-01T00:00:00Z", "2025-02-01T00:00:00Z");
        row("es_ES", "UTC", 2025, 0, none, none);
        row("es_ES", "UTC", 2025, 13, none, none);
        row("es_ES", "UTC", 0, 1, none, none);
        row("es_ES", "UTC", std::numeric_limits<int>::max(), 12, none, none);
        row("es_ES", "UTC", std::numeric_limits<int>::min(), 1, none, none);
        row("es_ES", "UTC", 2025, std::numeric_limits<int>::min(), none, none);
    }

    void monthRunsFromItsFirstInstantToTheNextOnes()
    {
        QFETCH(QString, locale);
        QFETCH(QString, zone);
        QFETCH(int, year);
        QFETCH(int, month);
        const UserEnvironment user(locale.toLatin1(), zone.toLatin1());
        QTEST(text(UserCalendar::startOfMonth(year, month)), "start");
        QTEST(text(UserCalendar::startOfNextMonth(year, month)), "end");
    }

    void yearIsTheCalendarsOwn_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("zone");
        QTest::addColumn<QString>("moment");
        QTest::addColumn<int>("year");
        QTest::addColumn<QString>("start");
        const auto row = [](const char *locale, const char *zone, const char *moment, int year, const char *start) {
            QTest::addRow("%s %s %s", locale, zone, moment)
                << QString::fromLatin1(locale) << QString::fromLatin1(zone) << QString::fromLatin1(moment) << year
                << QString::fromLatin1(start);
        };
        row("es_ES", "Atlantic/Canary", "2024-12-31T23:59:59Z", 2024, "2024-01-01T00:00:00Z");
        row("es_ES", "Pacific/Kiritimati", "2024-12-31T10:00:00Z", 2025, "2024-12-31T10:00:00Z");
        row("es_ES", "Pacific/Pago_Pago", "2025-01-01T10:59:59Z", 2024, "2024-01-01T11:00:00Z");
        row("fa_IR", "UTC", "2025-03-20T12:00:00Z", 1403, "2024-03-20T00:00:00Z");
        row("th_TH", "UTC", "2025-03-20T12:00:00Z", 2568, "2025-01-01T00:00:00Z");
        row("C", "UTC", "1969-12-31T23:59:59.999Z", 1969, "1969-01-01T00:00:00Z");
    }

    void yearIsTheCalendarsOwn()
    {
        QFETCH(QString, locale);
        QFETCH(QString, zone);
        QFETCH(QString, moment);
        QFETCH(int, year);
        const UserEnvironment user(locale.toLatin1(), zone.toLatin1());
        QCOMPARE(UserCalendar::year(instant(moment.toLatin1().constData())), year);
        QTEST(text(UserCalendar::startOfYear(year)), "start");
    }

    void dayBeginsWhereItsFirstInstantIs_data()
    {
        QTest::addColumn<QString>("zone");
        QTest::addColumn<QString>("moment");
        QTest::addColumn<QString>("start");
        const auto row = [](const char *zone, const char *moment, const char *start) {
            QTest::addRow("%s %s", zone, moment)
                << QString::fromLatin1(zone) << QString::fromLatin1(moment) << QString::fromLatin1(start);
        };
        row("UTC", "2025-05-05T23:59:59.999Z", "2025-05-05T00:00:00Z");
        row("UTC", "1969-12-31T12:00:00.5Z", "1969-12-31T00:00:00Z");
        row("Atlantic/Canary", "2025-03-30T12:00:00Z", "2025-03-30T00:00:00Z");
        row("Atlantic/Canary", "2025-07-01T22:59:59Z", "2025-06-30T23:00:00Z");
        row("Pacific/Kiritimati", "2025-01-01T09:59:59Z", "2024-12-31T10:00:00Z");
        row("Pacific/Pago_Pago", "2025-01-01T00:00:00Z", "2024-12-31T11:00:00Z");
        // No midnight: the clock went from 00:00 to 01:00.
        row("America/Asuncion", "2017-10-01T12:00:00Z", "2017-10-01T04:00:00Z");
        // The gap began before midnight: from 23:30 to 00:30.
        row("America/Toronto", "1919-03-31T12:00:00Z", "1919-03-31T04:30:00Z");
        // Two midnights: the clock went from 01:00 back to 00:00.
        row("America/Havana", "2024-11-03T12:00:00Z", "2024-11-03T04:00:00Z");
    }

    void dayBeginsWhereItsFirstInstantIs()
    {
        QFETCH(QString, zone);
        QFETCH(QString, moment);
        const UserEnvironment user("es_ES", zone.toLatin1());
        QTEST(isoText(UserCalendar::startOfDay(instant(moment.toLatin1().constData()))), "start");
    }

    void monthNamesAreThoseOfADate_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("last");
        QTest::addColumn<int>("firstWeekday");
        const auto row = [](const char *locale, const char *first, const char *last, int firstWeekday) {
            QTest::newRow(locale) << QString::fromLatin1(locale) << QString::fromUtf8(first) << QString::fromUtf8(last)
                                  << firstWeekday;
        };
        row("es_ES", "Enero", "Diciembre", 2);
        row("en_US", "January", "December", 1);
        row("de_DE", "Januar", "Dezember", 2);
        row("ca_ES", "De Gener", "De Desembre", 2);
        row("fa_IR", "فروردین", "اسفند", 7);
        row("C", "January", "December", 1);
    }

    void monthNamesAreThoseOfADate()
    {
        QFETCH(QString, locale);
        const UserEnvironment user(locale.toLatin1(), "UTC");
        const std::vector<QString> names = UserCalendar::monthNames();
        QCOMPARE(names.size(), size_t(12));
        QTEST(names.front(), "first");
        QTEST(names.back(), "last");
        QTEST(UserCalendar::firstWeekday(), "firstWeekday");
    }

private:
    static QString text(std::optional<Instant> moment) { return moment ? isoText(*moment) : QStringLiteral("none"); }
};

QTEST_GUILESS_MAIN(UserCalendarTest)
#include "UserCalendarTest.moc"
