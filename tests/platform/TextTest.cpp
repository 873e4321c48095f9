// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Text/Localization.h"
#include "Platform/Text/NumberFormat.h"
#include "Platform/Text/OneLine.h"
#include "Platform/Text/TextSearch.h"
#include "Support/Table.h"
#include "Support/UserEnvironment.h"

#include <QLocale>
#include <QTest>

#include <clocale>
#include <limits>

class TextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { setTranslationTable({}); }

    void numbersHaveFixedDecimals_data()
    {
        const Table<double, int, QString> row;
        row.unnamed(3, 1, "3.0");
        row.unnamed(2.25, 1, "2.2");
        row.unnamed(2.35, 1, "2.4");
        row.unnamed(12.5, 0, "12");
        row.unnamed(-0.04, 1, "-0.0");
        row.unnamed(28.12345, 4, "28.1234");
        row.unnamed(1e22, 0, "10000000000000000000000");
        row.unnamed(std::numeric_limits<double>::infinity(), 1, "inf");
    }

    void numbersHaveFixedDecimals()
    {
        const auto [value, decimals, expected] = Table<double, int, QString>::current();
        QCOMPARE(fixedText(value, decimals), expected);
    }

    void numbersDoNotFollowTheLocale()
    {
        const UserEnvironment user("es_ES.UTF-8", "UTC");
        const QLocale before;
        QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
        const QString decimals = fixedText(1234.5, 1);
        const QString shortest = shortestText(1234.5);
        QLocale::setDefault(before);
        QCOMPARE(decimals, QStringLiteral("1234.5"));
        QCOMPARE(shortest, QStringLiteral("1234.5"));
    }

    void greatestNumbersFit()
    {
        QCOMPARE(fixedText(-std::numeric_limits<double>::max(), 17).size(), 1 + 309 + 1 + 17);
        QCOMPARE(shortestText(std::numeric_limits<double>::denorm_min()).size(), 326);
    }

    void shortestNumbersReadBack_data()
    {
        const Table<double, QString> row;
        row.unnamed(28, "28.0");
        row.unnamed(-16.5, "-16.5");
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

    void searchReadsPastNulAndBrokenText()
    {
        const QString text =
            QStringLiteral("A") + QChar(u'\0') + QStringLiteral("B") + QChar(0xD800) + QStringLiteral("Ç");
        QVERIFY(foldedContains(foldedForSearch(text), foldedForSearch(QStringLiteral("b"))));
        QVERIFY(foldedContains(foldedForSearch(text), foldedForSearch(QStringLiteral("c"))));
    }

    void blanksAreTrimmedAndLineEndsStay_data()
    {
        const Table<QString, QString> row;
        row("both ends", " \t a b\t ", "a b");
        row("hard blank", "\u00a0a\u3000", "a");
        row("line end", " \na\n ", "\na\n");
        row("only blanks", " \t ", "");
    }

    void blanksAreTrimmedAndLineEndsStay()
    {
        const auto [text, expected] = Table<QString, QString>::current();
        QCOMPARE(trimmedOfBlanks(text), expected);
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
        row.unnamed("50 %", "50 %");
        row.unnamed("%@", "%@");
        row.unnamed("%lld %@ %@ %@", "-3 %@ 50%% %lld b %@");
        row.unnamed("%d %s %n", "%d %s %n");
    }

    void placeholdersAreFilledInOrder()
    {
        const auto [format, expected] = Table<QString, QString>::current();
        const QString hostile = QStringLiteral("%@ 50%% %lld");
        QCOMPARE(formatted(format, {qint64(-3), hostile, QStringLiteral("b")}), expected);
    }

    void tableOverridesByKey()
    {
        const QString standard = QStringLiteral("Earthquakes");
        QCOMPARE(localized("list.title", standard), standard);
        setTranslationTable("{\"list.title\": \"Terremotos\", \"list.search\": \"\", \"list.count\": 5}");
        QCOMPARE(localized("list.title", standard), QStringLiteral("Terremotos"));
        QCOMPARE(localized("list.search", standard), QString());
        QCOMPARE(localized("list.count", standard), standard);
        QCOMPARE(localized("list.other", standard), standard);
    }

    void unreadableTableRemovesTheOneInForce_data()
    {
        const Table<QByteArray> row;
        row("empty", QByteArray());
        row("cut short", QByteArray("{\"list.title\": \"Terr"));
    }

    void unreadableTableRemovesTheOneInForce()
    {
        const auto [json] = Table<QByteArray>::current();
        setTranslationTable("{\"list.title\": \"Terremotos\"}");
        setTranslationTable(json);
        QCOMPARE(localized("list.title", QStringLiteral("Earthquakes")), QStringLiteral("Earthquakes"));
    }
};

QTEST_GUILESS_MAIN(TextTest)
#include "TextTest.moc"
