// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Text/Localization.h"
#include "Platform/Text/NumberFormat.h"
#include "Platform/Text/TextSearch.h"
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
        QTest::addColumn<double>("value");
        QTest::addColumn<int>("decimals");
        QTest::addColumn<QString>("expected");
        const auto row = [](double value, int decimals, const char *expected) {
            QTest::addRow("%s", expected) << value << decimals << QString::fromLatin1(expected);
        };
        row(3, 1, "3.0");
        row(2.25, 1, "2.2");
        row(2.35, 1, "2.4");
        row(0.05, 1, "0.1");
        row(12.5, 0, "12");
        row(13.5, 0, "14");
        row(-0.04, 1, "-0.0");
        row(-1.55, 1, "-1.6");
        row(28.12345, 4, "28.1234");
        row(1e22, 0, "10000000000000000000000");
        row(std::numeric_limits<double>::infinity(), 1, "inf");
    }

    void numbersHaveFixedDecimals()
    {
        QFETCH(double, value);
        QFETCH(int, decimals);
        QTEST(fixedText(value, decimals), "expected");
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
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("expected");
        const auto row = [](double value, const char *expected) {
            QTest::newRow(expected) << value << QString::fromLatin1(expected);
        };
        row(28, "28.0");
        row(-16.5, "-16.5");
        row(0.1, "0.1");
        row(-0.0, "-0.0");
        row(28.123456789012345, "28.123456789012344");
        row(1e21, "1000000000000000000000.0");
        row(0.00001, "0.00001");
        row(std::numeric_limits<double>::quiet_NaN(), "nan");
    }

    void shortestNumbersReadBack()
    {
        QFETCH(double, value);
        QTEST(shortestText(value), "expected");
    }

    void searchIsBlindToCaseAndAccents_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("needle");
        QTest::addColumn<bool>("found");
        const auto row = [](const char *text, const char *needle, bool found) {
            QTest::addRow("%s in %s", needle, text) << QString::fromUtf8(text) << QString::fromUtf8(needle) << found;
        };
        row("ATLÁNTICO-CANARIAS", "atlantico", true);
        row("ATLANTICO-CANARIAS", "atlÁntico", true);
        row("NW PEÑÓN.ITF", "penon", true);
        row("E GÜÍMAR.ITF", "guimar", true);
        row("E GUIMAR.ITF", "güímar", true);
        row("E GU\u0308I\u0301MAR.ITF", "güímar", true);
        row("GRÜSSE", "grüße", true);
        row("ﬁno", "FINO", true);
        row("IĞDIR", "ığdır", true);
        row("İSTANBUL", "istanbul", true);
        row("Nº 5", "no 5", true);
        row("ＶＡＬＶＥＲＤＥ", "valverde", true);
        row("ℌierro", "hierro", true);
        row("SW VALVERDE.IHI", "valverde.ihi", true);
        row("SW VALVERDE.IHI", "", true);
        row("SW VALVERDE.IHI", "\u0301", true);
        row("SW VALVERDE.IHI", "valverde ihi", false);
        row("Søborg", "soborg", false);
        row("", "a", false);
        row("𝔸bc", "abc", true);
    }

    void searchIsBlindToCaseAndAccents()
    {
        QFETCH(QString, text);
        QFETCH(QString, needle);
        // In Turkish a collation would take i and ı, in Spanish n and ñ, for different letters.
        for (const char *locale : {"C", "es_ES.UTF-8", "tr_TR.UTF-8"}) {
            const UserEnvironment user(locale, "UTC");
            QTEST(foldedContains(foldedForSearch(text), foldedForSearch(needle)), "found");
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
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const char *text, const char *expected) {
            QTest::newRow(name) << QString::fromUtf8(text) << QString::fromUtf8(expected);
        };
        row("both ends", " \t a b\t ", "a b");
        row("hard blank", "\u00a0a\u3000", "a");
        row("line end", " \na\n ", "\na\n");
        row("only blanks", " \t ", "");
        row("nothing", "", "");
        row("nothing to trim", "a", "a");
    }

    void blanksAreTrimmedAndLineEndsStay()
    {
        QFETCH(QString, text);
        QTEST(trimmedOfBlanks(text), "expected");
    }

    void placeholdersAreFilledInOrder_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *format, const char *expected) {
            QTest::newRow(format) << QString::fromUtf8(format) << QString::fromUtf8(expected);
        };
        // The arguments are the number -3, the text "%@ 50%% %lld" and the text "b".
        row("updated %lld day(s) ago (%@)", "updated -3 day(s) ago (%@ 50%% %lld)");
        row("%lld%@%@", "-3%@ 50%% %lldb");
        row("%lld%%", "-3%");
        row("%%lld", "%lld");
        row("%", "%");
        row("50 %", "50 %");
        row("%@", "%@");
        row("%lld %lld", "-3 %lld");
        row("%lld %@ %@ %@", "-3 %@ 50%% %lld b %@");
        row("%d %s %n", "%d %s %n");
        row("", "");
    }

    void placeholdersAreFilledInOrder()
    {
        QFETCH(QString, format);
        const QString hostile = QStringLiteral("%@ 50%% %lld");
        QTEST(formatted(format, {qint64(-3), hostile, QStringLiteral("b")}), "expected");
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
        QTest::addColumn<QByteArray>("json");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("cut short") << QByteArray("{\"list.title\": \"Terr");
        QTest::newRow("an array") << QByteArray("[\"list.title\", \"Terremotos\"]");
    }

    void unreadableTableRemovesTheOneInForce()
    {
        QFETCH(QByteArray, json);
        setTranslationTable("{\"list.title\": \"Terremotos\"}");
        setTranslationTable(json);
        QCOMPARE(localized("list.title", QStringLiteral("Earthquakes")), QStringLiteral("Earthquakes"));
    }
};

QTEST_GUILESS_MAIN(TextTest)
#include "TextTest.moc"
