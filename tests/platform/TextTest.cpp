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
    void numbersHaveFixedDecimals_data()
    {
        const Table<double, int, QString> row;
        row.unnamed(3, 1, "3.0");
        row.unnamed(2.25, 1, "2.2");
        row.unnamed(2.35, 1, "2.4");
        row.unnamed(12.5, 0, "12");
        row.unnamed(-0.04, 1, "-0.0");
        row.unnamed(1e22, 0, "10000000000000000000000");
        row.unnamed(std::numeric_limits<double>::infinity(), 1, "inf");
    }

    void numbersHaveFixedDecimals()
    {
        const auto [value, decimals, expected] = Table<double, int, QString>::current();
        QCOMPARE(fixedText(value, decimals), expected);
    }

    void shortestNumbersReadBack_data()
    {
        const Table<double, QString> row;
        row.unnamed(28, "28.0");
        row.unnamed(28.123456789012345, "28.123456789012344");
        row.unnamed(1e21, "1000000000000000000000.0");
        row.unnamed(0.00001, "0.00001");
        row.unnamed(std::numeric_limits<double>::quiet_NaN(), "nan");
    }

    void shortestNumbersReadBack()
    {
        const auto [value, expected] = Table<double, QString>::current();
        QCOMPARE(shortestText(value), expected);
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

    void textsFromOutsideFitOneLine_data()
    {
        const Table<QString, QString> row;
        row("ordinary", "SW VILLA DE MAZO.ILP", "SW VILLA DE MAZO.ILP");
        row("line end", "W FRONTERA\r\nIHI", "W FRONTERA IHI");
        row("tab and bell", "a\tb\ac", "a b c");
        row("blanks at the ends", "\n a \u0085", "a");
        row("escape sequence", "\u001B[31mred", "[31mred");
        row("override", "a\u202Egnp.exe\u202C b", "agnp.exe b");
        row("isolate", "\u2067a\u2069", "a");
        row("direction mark between letters", "a\u200Fb", "ab");
        row("Arabic stays", "\u0627\u0644", "\u0627\u0644");
        row("markup stays as text", "<b>a</b> &amp;", "<b>a</b> &amp;");
    }

    void textsFromOutsideFitOneLine()
    {
        const auto [text, expected] = Table<QString, QString>::current();
        QCOMPARE(oneLine(text), expected);
    }

    void placeholdersAreFilledInOrder_data()
    {
        const Table<QString, QString> row;
        // The arguments are the number -3, the text "%@ 50%% %lld" and the text "b".
        row.unnamed("updated %lld day(s) ago (%@)", "updated -3 day(s) ago (%@ 50%% %lld)");
        row.unnamed("%lld%@%@", "-3%@ 50%% %lldb");
        row.unnamed("%lld%%", "-3%");
        row.unnamed("%%lld", "%lld");
        row.unnamed("%@", "%@");
        row.unnamed("%lld %@ %@ %@", "-3 %@ 50%% %lld b %@");
        row.unnamed("%d %s %n", "%d %s %n");
    }

    void placeholdersAreFilledInOrder()
    {
        const auto [format, expected] = Table<QString, QString>::current();
        QCOMPARE(formatted(format, {qint64(-3), u"%@ 50%% %lld"_s, u"b"_s}), expected);
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
