// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Text/Localization.h"
#include "Platform/Text/NumberFormat.h"
#include "Platform/Text/OneLine.h"
#include "Platform/Text/TextSearch.h"
#include "Support/Table.h"
#include "Support/UserEnvironment.h"

#include <QLocale>

#include <limits>

using namespace Qt::StringLiterals;

class TextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numbersHaveFixedDecimals()
    {
        QCOMPARE(fixedText(3, 1), u"3.0"_s);
        QCOMPARE(fixedText(2.25, 1), u"2.2"_s);
        QCOMPARE(fixedText(2.35, 1), u"2.4"_s);
        QCOMPARE(fixedText(12.5, 0), u"12"_s);
        QCOMPARE(fixedText(-0.04, 1), u"-0.0"_s);
        QCOMPARE(fixedText(1e22, 0), u"10000000000000000000000"_s);
        QCOMPARE(fixedText(std::numeric_limits<double>::infinity(), 1), u"inf"_s);
    }

    void shortestNumbersReadBack()
    {
        QCOMPARE(shortestText(28), u"28.0"_s);
        QCOMPARE(shortestText(28.123456789012345), u"28.123456789012344"_s);
        QCOMPARE(shortestText(1e21), u"1000000000000000000000.0"_s);
        QCOMPARE(shortestText(0.00001), u"0.00001"_s);
        QCOMPARE(shortestText(std::numeric_limits<double>::quiet_NaN()), u"nan"_s);
    }

    void numbersDoNotFollowTheLocaleAndFitAtTheirGreatest()
    {
        QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
        const QString texts = fixedText(1234.5, 1) + u' ' + shortestText(1234.5);
        QLocale::setDefault(QLocale::c());
        QCOMPARE(texts, u"1234.5 1234.5"_s);
        QCOMPARE(fixedText(-std::numeric_limits<double>::max(), 17).size(), 1 + 309 + 1 + 17);
        QCOMPARE(shortestText(std::numeric_limits<double>::denorm_min()).size(), 326);
    }

    void searchIsBlindToCaseAndAccents_data()
    {
        const Table<QString, QString, bool> row;
        row.unnamed("ATLANTICO-CANARIAS", "atlÁntico", true);
        row.unnamed("NW PEÑÓN.ITF", "penon", true);
        row.unnamed("E GU\u0308I\u0301MAR.ITF", "güímar", true);
        row.unnamed("GRÜSSE", "grüße", true);
        row.unnamed("ﬁno", "FINO", true);
        row.unnamed("IĞDIR", "ığdır", true);
        row.unnamed("İSTANBUL", "istanbul", true);
        row.unnamed("SW VALVERDE.IHI", "", true);
        row.unnamed("SW VALVERDE.IHI", "\u0301", true);
        row.unnamed("SW VALVERDE.IHI", "valverde ihi", false);
        row.unnamed("Søborg", "soborg", false);
        row.unnamed("", "a", false);
        row.unnamed("𝔸bc", "abc", true);
        row("past zero", u"A\0B"_s, "b", true);
        row("past half a character", u"A"_s + QChar(0xD800) + u"Ç"_s, "c", true);
    }

    void searchIsBlindToCaseAndAccents()
    {
        const auto [text, needle, found] = Table<QString, QString, bool>::current();
        // In Turkish a collation would take i and ı, in Spanish n and ñ, for different letters.
        for (const char *locale : {"C", "es_ES.UTF-8", "tr_TR.UTF-8"}) {
            const UserEnvironment user(locale, "UTC");
            QCOMPARE(foldedContains(foldedForSearch(text), foldedForSearch(needle)), found);
        }
    }

    void blanksAreTrimmedAndLineEndsStay()
    {
        QCOMPARE(trimmedOfBlanks(u"\u00a0\t a b\u3000"_s), u"a b"_s);
        QCOMPARE(trimmedOfBlanks(u" \na\n "_s), u"\na\n"_s);
        QCOMPARE(trimmedOfBlanks(u" \t "_s), QString());
    }

    void textsFromOutsideFitOneLine()
    {
        QCOMPARE(oneLine(u"SW VILLA DE MAZO.ILP"_s), u"SW VILLA DE MAZO.ILP"_s);
        QCOMPARE(oneLine(u"W FRONTERA\r\nIHI"_s), u"W FRONTERA IHI"_s);
        QCOMPARE(oneLine(u"a\tb\ac"_s), u"a b c"_s);
        QCOMPARE(oneLine(u"\n a \u0085"_s), u"a"_s);
        QCOMPARE(oneLine(u"\u001B[31mred"_s), u"[31mred"_s);
        QCOMPARE(oneLine(u"a\u202Egnp.exe\u202C b"_s), u"agnp.exe b"_s);
        QCOMPARE(oneLine(u"\u2067a\u2069"_s), u"a"_s);
        QCOMPARE(oneLine(u"a\u200Fb"_s), u"ab"_s);
        QCOMPARE(oneLine(u"\u0627\u0644"_s), u"\u0627\u0644"_s);
        QCOMPARE(oneLine(u"<b>a</b> &amp;"_s), u"<b>a</b> &amp;"_s);
    }

    void placeholdersAreFilledInOrder()
    {
        const auto filled = [](const QString &format) {
            return formatted(format, {qint64(-3), u"%@ 50%% %lld"_s, u"b"_s});
        };
        QCOMPARE(filled(u"updated %lld day(s) ago (%@)"_s), u"updated -3 day(s) ago (%@ 50%% %lld)"_s);
        QCOMPARE(filled(u"%lld%@%@"_s), u"-3%@ 50%% %lldb"_s);
        QCOMPARE(filled(u"%lld%%"_s), u"-3%"_s);
        QCOMPARE(filled(u"%%lld"_s), u"%lld"_s);
        QCOMPARE(filled(u"%@"_s), u"%@"_s);
        QCOMPARE(filled(u"%lld %@ %@ %@"_s), u"-3 %@ 50%% %lld b %@"_s);
        QCOMPARE(filled(u"%d %s %n"_s), u"%d %s %n"_s);
    }

    void tableOverridesByKey()
    {
        const QString standard = u"Earthquakes"_s;
        QCOMPARE(localized("list.title", standard), standard);
        for (const char *unreadable : {"", "{\"list.title\": \"Terr"}) {
            setTranslationTable("{\"list.title\": \"Terremotos\", \"list.search\": \"\", \"list.count\": 5}");
            QCOMPARE(localized("list.title", standard), u"Terremotos"_s);
            QCOMPARE(localized("list.search", standard), QString());
            QCOMPARE(localized("list.count", standard), standard);
            QCOMPARE(localized("list.other", standard), standard);
            setTranslationTable(unreadable);
            QCOMPARE(localized("list.title", standard), standard);
        }
    }
};

QTEST_GUILESS_MAIN(TextTest)
#include "TextTest.moc"
