// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Text/DateFormatter.h"
#include "Support/Table.h"
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
        const Table<QByteArray, QByteArray, int, int, QString, QString> row;
        constexpr int least = std::numeric_limits<int>::min();
        row.unnamed("es_ES", "UTC", 2025, 12, "2025-12-01T00:00:00Z", "2026-01-01T00:00:00Z");
        row.unnamed("es_ES", "Atlantic/Canary", 2025, 3, "2025-03-01T00:00:00Z", "2025-03-31T23:00:00Z");
        row.unnamed("es_ES", "Pacific/Kiritimati", 2025, 1, "2024-12-31T10:00:00Z", "2025-01-31T10:00:00Z");
        // The clock went from 00:00 to 01:00 on the first of the month, so that it began at 01:00.
        row.unnamed("es_PY", "America/Asuncion", 2017, 10, "2017-10-01T04:00:00Z", "2017-11-01T03:00:00Z");
        // The last of 1403 is 20 March 2025.
        row.unnamed("fa_IR", "UTC", 1403, 12, "2025-02-19T00:00:00Z", "2025-03-21T00:00:00Z");
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
    static QString text(std::optional<Instant> moment) { return moment ? isoText(*moment) : QStringLiteral("none"); }
};

QTEST_GUILESS_MAIN(UserCalendarTest)
#include "UserCalendarTest.moc"
