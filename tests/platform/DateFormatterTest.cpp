// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Text/DateFormatter.h"
#include "Support/TestInstant.h"
#include "Support/UserEnvironment.h"

#include <QTest>

class DateFormatterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textFollowsLocaleAndZone_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("zone");
        QTest::addColumn<bool>("isSkeleton");
        QTest::addColumn<QString>("fields");
        QTest::addColumn<QString>("moment");
        QTest::addColumn<QString>("expected");
        const auto pattern = [](const char *locale, const char *fields, const char *zone, const char *moment,
                                const char *expected) {
            QTest::addRow("%s %s %s %s", locale, fields, zone, moment)
                << QString::fromUtf8(locale) << QString::fromUtf8(zone) << false << QString::fromUtf8(fields)
                << QString::fromUtf8(moment) << QString::fromUtf8(expected);
        };
        const auto skeleton = [](const char *locale, const char *fields, const char *zone, const char *moment,
                                 const char *expected) {
            QTest::addRow("fields: %s %s %s %s", locale, fields, zone, moment)
                << QString::fromUtf8(locale) << QString::fromUtf8(zone) << true << QString::fromUtf8(fields)
                << QString::fromUtf8(moment) << QString::fromUtf8(expected);
        };
        const char *winter = "2025-02-01T03:03:09Z";
        const char *summer = "2025-08-01T14:04:05Z";

        pattern("es_ES.UTF-8", "d MMM yyyy", "UTC", winter, "1 feb 2025");
        pattern("en_US.UTF-8", "dd MMM yyyy", "UTC", winter, "01 Feb 2025");
        pattern("de_DE.UTF-8", "d MMM yyyy", "UTC", winter, "1 Feb. 2025");
        pattern("ca_ES.UTF-8", "d MMM yyyy", "UTC", winter, "1 de febr. 2025");
        pattern("C.UTF-8", "MMMM yyyy", "UTC", winter, "February 2025");
        pattern("fa_IR.UTF-8", "yyyy", "UTC", winter, "۱۴۰۳");

        skeleton("en_US.UTF-8", "dMMyyHHmm", "UTC", winter, "02/1/25, 03:03");
        skeleton("es_ES.UTF-8", "dMMyyHHmm", "UTC", winter, "1/02/25, 03:03");
        skeleton("de_DE.UTF-8", "dMMyyHHmm", "UTC", winter, "1.02.25, 03:03");
        skeleton("ca_ES.UTF-8", "dMMyyHHmm", "UTC", winter, "1/02/25 03:03");
        skeleton("C.UTF-8", "dMMyyHHmm", "UTC", winter, "02/1/25, 03:03");
        skeleton("en_US.UTF-8", "dMMMyjm", "UTC", summer, "Aug 1, 2025, 2:04\u202fPM");
        skeleton("es_ES.UTF-8", "dMMMyjms", "UTC", summer, "1 ago 2025, 14:04:05");
        skeleton("en_GB.UTF-8", "dMMMyjm", "UTC", winter, "1 Feb 2025, 03:03");
        skeleton("de_DE.UTF-8", "dMMMyjm", "UTC", summer, "1. Aug. 2025, 14:04");

        pattern("es_ES.UTF-8", "d HH:mm:ss", "Atlantic/Canary", "2025-03-30T00:59:59Z", "30 00:59:59");
        pattern("es_ES.UTF-8", "d HH:mm:ss", "Atlantic/Canary", "2025-03-30T01:00:00Z", "30 02:00:00");
        pattern("es_ES.UTF-8", "d HH:mm:ss", "Atlantic/Canary", "2025-10-26T00:59:59Z", "26 01:59:59");
        pattern("es_ES.UTF-8", "d HH:mm:ss", "Atlantic/Canary", "2025-10-26T01:00:00Z", "26 01:00:00");
        pattern("es_ES.UTF-8", "d HH:mm", "Pacific/Kiritimati", "2025-01-01T10:00:00Z", "2 00:00");
        pattern("es_ES.UTF-8", "d HH:mm", "Pacific/Pago_Pago", "2025-01-01T10:59:59Z", "31 23:59");
    }

    void textFollowsLocaleAndZone()
    {
        QFETCH(QString, locale);
        QFETCH(QString, zone);
        QFETCH(bool, isSkeleton);
        QFETCH(QString, fields);
        QFETCH(QString, moment);
        const UserEnvironment user(locale.toUtf8(), zone.toUtf8());
        const DateFormatter formatter(isSkeleton ? DateFormatter::Form::skeleton : DateFormatter::Form::pattern,
                                      fields);
        QTEST(formatter.string(instant(moment.toLatin1().constData())), "expected");
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
        QTest::addColumn<QByteArray>("all");
        QTest::addColumn<QByteArray>("time");
        QTest::addColumn<QByteArray>("lang");
        QTest::addColumn<QString>("january");
        const auto row = [](const char *all, const char *time, const char *lang, const char *january) {
            QTest::addRow("%s:%s:%s", all, time, lang)
                << QByteArray(all) << QByteArray(time) << QByteArray(lang) << QString::fromUtf8(january);
        };
        row("es_ES.UTF-8", "de_AT.UTF-8", "en_US.UTF-8", "enero");
        row("", "de_AT.UTF-8", "en_US.UTF-8", "Jänner");
        row("", "", "ca_ES@valencia", "de gener");
        row("", "", "", "January");
        row("POSIX", "", "es_ES.UTF-8", "January");
        row("C", "", "es_ES.UTF-8", "January");
        row("es_XX.UTF-8", "", "", "enero");
        row("qq_QQ.UTF-8", "", "", "January");
        row("../../etc/passwd", "", "", "January");
    }

    void localeComesFromTheFirstVariableSet()
    {
        QFETCH(QByteArray, all);
        QFETCH(QByteArray, time);
        QFETCH(QByteArray, lang);
        const UserEnvironment user({{"LC_ALL", all}, {"LC_TIME", time}, {"LANG", lang}});
        const DateFormatter formatter(DateFormatter::Form::pattern, QStringLiteral("MMMM"));
        QTEST(formatter.string(instant("2025-01-05T12:00:00Z")), "january");
    }
};

QTEST_GUILESS_MAIN(DateFormatterTest)
#include "DateFormatterTest.moc"
