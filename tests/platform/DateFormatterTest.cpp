// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Text/DateFormatter.h"
#include "Platform/Text/UserCalendar.h"
#include "Support/Table.h"
#include "Support/TestInstant.h"
#include "Support/UserEnvironment.h"

#include <limits>

using namespace Qt::StringLiterals;

class DateFormatterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textFollowsLocaleAndZone_data()
    {
        using Form = DateFormatter::Form;
        const Table<QByteArray, Form, QString, QByteArray, QByteArray, QString> table;
        const auto row = [&](const char *locale, Form form, const char *fields, const char *zone, const char *moment,
                             const char *expected) {
            table(QByteArray(locale) + ": " + expected, locale, form, fields, zone, moment, expected);
        };
        const char *winter = "2025-02-01T03:03:09Z";
        const char *summer = "2025-08-01T14:04:05Z";
        row("es_ES.UTF-8", Form::pattern, "d MMM yyyy", "UTC", winter, "1 feb 2025");
        row("en_US.UTF-8", Form::pattern, "dd MMM yyyy", "UTC", winter, "01 Feb 2025");
        row("ca_ES.UTF-8", Form::pattern, "d MMM yyyy", "UTC", winter, "1 de febr. 2025");
        row("C.UTF-8", Form::pattern, "MMMM yyyy", "UTC", winter, "February 2025");
        row("fa_IR.UTF-8", Form::pattern, "yyyy", "UTC", winter, "۱۴۰۳");

        row("en_US.UTF-8", Form::skeleton, "dMMyyHHmm", "UTC", winter, "02/1/25, 03:03");
        row("es_ES.UTF-8", Form::skeleton, "dMMyyHHmm", "UTC", winter, "1/02/25, 03:03");
        row("C.UTF-8", Form::skeleton, "dMMyyHHmm", "UTC", winter, "02/1/25, 03:03");
        row("en_US.UTF-8", Form::skeleton, "dMMMyjm", "UTC", summer, "Aug 1, 2025, 2:04\u202fPM");
        row("es_ES.UTF-8", Form::skeleton, "dMMMyjms", "UTC", summer, "1 ago 2025, 14:04:05");

        row("es_ES.UTF-8", Form::pattern, "d HH:mm:ss", "Atlantic/Canary", "2025-03-30T00:59:59Z", "30 00:59:59");
        row("es_ES.UTF-8", Form::pattern, "d HH:mm:ss", "Atlantic/Canary", "2025-03-30T01:00:00Z", "30 02:00:00");
        row("es_ES.UTF-8", Form::pattern, "d HH:mm", "Pacific/Kiritimati", "2025-01-01T10:00:00Z", "2 00:00");
        row("es_ES.UTF-8", Form::pattern, "d HH:mm", "Pacific/Pago_Pago", "2025-01-01T10:59:59Z", "31 23:59");
    }

    void textFollowsLocaleAndZone()
    {
        const auto [locale, form, fields, zone, moment, expected] =
            Table<QByteArray, DateFormatter::Form, QString, QByteArray, QByteArray, QString>::current();
        const UserEnvironment user(locale, zone);
        QCOMPARE(DateFormatter(form, fields).string(instant(moment.constData())), expected);
    }

    void formatterKeepsItsLocaleAndANamedZoneWins()
    {
        const UserEnvironment first("es_ES.UTF-8", "Pacific/Kiritimati");
        const DateFormatter spanish(DateFormatter::Form::pattern, u"d MMMM HH:mm"_s, u"UTC"_s);
        const UserEnvironment second("de_DE.UTF-8", "UTC");
        const DateFormatter german(DateFormatter::Form::pattern, u"d MMMM HH:mm"_s);
        QCOMPARE(spanish.string(instant("2025-01-05T23:30:00Z")), u"5 enero 23:30"_s);
        QCOMPARE(german.string(instant("2025-01-05T23:30:00Z")), u"5 Januar 23:30"_s);
    }

    void localeComesFromTheFirstVariableSet_data()
    {
        const Table<QByteArray, QByteArray, QByteArray, QString> row;
        row.unnamed("es_ES.UTF-8", "de_AT.UTF-8", "en_US.UTF-8", "enero");
        row.unnamed("", "de_AT.UTF-8", "en_US.UTF-8", "Jänner");
        row.unnamed("", "", "ca_ES@valencia", "de gener");
        row.unnamed("", "", "", "January");
        row.unnamed("C", "", "es_ES.UTF-8", "January");
        row.unnamed("es_XX.UTF-8", "", "", "enero");
        row.unnamed("../../etc/passwd", "", "", "January");
    }

    void localeComesFromTheFirstVariableSet()
    {
        const auto [all, time, lang, january] = Table<QByteArray, QByteArray, QByteArray, QString>::current();
        const UserEnvironment user({{"LC_ALL", all}, {"LC_TIME", time}, {"LANG", lang}});
        const DateFormatter formatter(DateFormatter::Form::pattern, u"MMMM"_s);
        QCOMPARE(formatter.string(instant("2025-01-05T12:00:00Z")), january);
    }

    void monthRunsFromItsFirstInstantToTheNextOnes_data()
    {
        const Table<QByteArray, QByteArray, int, int, QString, QString> row;
        constexpr int least = std::numeric_limits<int>::min();
        row.unnamed("es_ES", "UTC", 2025, 12, "2025-12-01T00:00:00Z", "2026-01-01T00:00:00Z");
        row.unnamed("es_ES", "Atlantic/Canary", 2025, 3, "2025-03-01T00:00:00Z", "2025-03-31T23:00:00Z");
        row.unnamed("es_ES", "Pacific/Kiritimati", 2025, 1, "2024-12-31T10:00:00Z", "2025-01-31T10:00:00Z");
        // The clock went from 00:00 to 01:00 on the first of the month, so that it began at 01:00.
        row.unnamed("es_PY", "America/Asuncion", 2017, 10, "2017-10-01T04:00:00Z", "2017-11-01T03:00:00Z");
        // The last of 1403 is 20 March 2025.
        row.unnamed("fa_IR", "UTC", 1403, 12, "2025-02-19T00:00:00Z", "2025-03-21T00:00:00Z");
        row.unnamed("am_ET@calendar=ethiopic", "UTC", 2017, 13, "2025-09-06T00:00:00Z", "2025-09-11T00:00:00Z");
        row.unnamed("es_ES", "UTC", 2025, 0, "none", "none");
        row.unnamed("es_ES", "UTC", 2025, 13, "none", "none");
        row.unnamed("es_ES", "UTC", 0, 1, "none", "none");
        row.unnamed("es_ES", "UTC", std::numeric_limits<int>::max(), 12, "none", "none");
        row.unnamed("es_ES", "UTC", least, 1, "none", "none");
        row.unnamed("es_ES", "UTC", 2025, least, "none", "none");
    }

    void monthRunsFromItsFirstInstantToTheNextOnes()
    {
        const auto [locale, zone, year, month, start, end] =
            Table<QByteArray, QByteArray, int, int, QString, QString>::current();
        const UserEnvironment user(locale, zone);
        QCOMPARE(text(UserCalendar::startOfMonth(year, month)), start);
        QCOMPARE(text(UserCalendar::startOfNextMonth(year, month)), end);
    }

    void yearIsTheCalendarsOwn_data()
    {
        const Table<QByteArray, QByteArray, QByteArray, int, QString> row;
        row.unnamed("es_ES", "Atlantic/Canary", "2024-12-31T23:59:59Z", 2024, "2024-01-01T00:00:00Z");
        row.unnamed("es_ES", "Pacific/Kiritimati", "2024-12-31T10:00:00Z", 2025, "2024-12-31T10:00:00Z");
        row.unnamed("es_ES", "Pacific/Pago_Pago", "2025-01-01T10:59:59Z", 2024, "2024-01-01T11:00:00Z");
        row.unnamed("fa_IR", "UTC", "2025-03-20T12:00:00Z", 1403, "2024-03-20T00:00:00Z");
        row.unnamed("C", "UTC", "1969-12-31T23:59:59.999Z", 1969, "1969-01-01T00:00:00Z");
    }

    void yearIsTheCalendarsOwn()
    {
        const auto [locale, zone, moment, year, start] =
            Table<QByteArray, QByteArray, QByteArray, int, QString>::current();
        const UserEnvironment user(locale, zone);
        QCOMPARE(UserCalendar::year(instant(moment.constData())), year);
        QCOMPARE(text(UserCalendar::startOfYear(year)), start);
    }

    void dayBeginsWhereItsFirstInstantIs_data()
    {
        const Table<QByteArray, QByteArray, QString> row;
        row.unnamed("UTC", "1969-12-31T12:00:00.5Z", "1969-12-31T00:00:00Z");
        row.unnamed("Atlantic/Canary", "2025-07-01T22:59:59Z", "2025-06-30T23:00:00Z");
        row.unnamed("Pacific/Kiritimati", "2025-01-01T09:59:59Z", "2024-12-31T10:00:00Z");
        // No midnight: the clock went from 00:00 to 01:00.
        row.unnamed("America/Asuncion", "2017-10-01T12:00:00Z", "2017-10-01T04:00:00Z");
        // The gap began before midnight: from 23:30 to 00:30.
        row.unnamed("America/Toronto", "1919-03-31T12:00:00Z", "1919-03-31T04:30:00Z");
        // Two midnights: the clock went from 01:00 back to 00:00.
        row.unnamed("America/Havana", "2024-11-03T12:00:00Z", "2024-11-03T04:00:00Z");
    }

    void dayBeginsWhereItsFirstInstantIs()
    {
        const auto [zone, moment, start] = Table<QByteArray, QByteArray, QString>::current();
        const UserEnvironment user("es_ES", zone);
        QCOMPARE(isoText(UserCalendar::startOfDay(instant(moment.constData()))), start);
    }

    void monthNamesAreThoseOfADate_data()
    {
        const Table<QByteArray, QString, QString, int> row;
        row.unnamed("es_ES", "Enero", "Diciembre", 2);
        row.unnamed("en_US", "January", "December", 1);
        row.unnamed("ca_ES", "De Gener", "De Desembre", 2);
        row.unnamed("fa_IR", "فروردین", "اسفند", 7);
    }

    void monthNamesAreThoseOfADate()
    {
        const auto [locale, first, last, firstWeekday] = Table<QByteArray, QString, QString, int>::current();
        const UserEnvironment user(locale, "UTC");
        const std::vector<QString> names = UserCalendar::monthNames();
        QCOMPARE(names.size(), size_t(12));
        QCOMPARE(names.front(), first);
        QCOMPARE(names.back(), last);
        QCOMPARE(UserCalendar::firstWeekday(), firstWeekday);
    }

private:
    static QString text(std::optional<Instant> moment) { return moment ? isoText(*moment) : u"none"_s; }
};

QTEST_GUILESS_MAIN(DateFormatterTest)
#include "DateFormatterTest.moc"
