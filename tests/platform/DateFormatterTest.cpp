// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Text/DateFormatter.h"
#include "Support/Table.h"
#include "Support/TestInstant.h"
#include "Support/UserEnvironment.h"

#include <QTest>

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

    void namedZoneWinsOverTheUsers()
    {
        const UserEnvironment user("es_ES.UTF-8", "Pacific/Kiritimati");
        const DateFormatter formatter(DateFormatter::Form::pattern, QStringLiteral("d HH:mm"), QStringLiteral("UTC"));
        QCOMPARE(formatter.string(instant("2025-01-01T23:30:00Z")), QStringLiteral("1 23:30"));
    }

    void formatterKeepsItsLocale()
    {
        const UserEnvironment first("es_ES.UTF-8", "UTC");
        const DateFormatter spanish(DateFormatter::Form::pattern, QStringLiteral("MMMM"));
        const UserEnvironment second("de_DE.UTF-8", "UTC");
        const DateFormatter german(DateFormatter::Form::pattern, QStringLiteral("MMMM"));
        QCOMPARE(spanish.string(instant("2025-01-05T00:00:00Z")), QStringLiteral("enero"));
        QCOMPARE(german.string(instant("2025-01-05T00:00:00Z")), QStringLiteral("Januar"));
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
        const DateFormatter formatter(DateFormatter::Form::pattern, QStringLiteral("MMMM"));
        QCOMPARE(formatter.string(instant("2025-01-05T12:00:00Z")), january);
    }
};

QTEST_GUILESS_MAIN(DateFormatterTest)
#include "DateFormatterTest.moc"
