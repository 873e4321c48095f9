// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Networking/HTMLParser.h"
#include "Core/DataSources/IGNDataSource.h"
#include "Core/Models/Region.h"
#include "PageGenerator.h"
#include "Platform/Text/NumberFormat.h"
#include "Support/FakeURLSession.h"

#include <QDateTime>
#include <QTest>

namespace {
using Kind = HTMLParserError::Kind;

QString described(const ParsedEarthquake &event)
{
    const QDateTime date = QDateTime::fromMSecsSinceEpoch(event.date.time_since_epoch().count(), Qt::UTC);
    const QStringList fields = {
        event.eventID,
        date.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")),
        shortestText(event.latitude),
        shortestText(event.longitude),
        shortestText(event.depth),
        shortestText(event.magnitude),
        event.magnitudeType,
        event.maxIntensity.value_or(QStringLiteral("none")),
        event.location,
    };
    return fields.join(QLatin1Char('|'));
}

/// One line for each event, or the error's own text.
QString outcome(const QByteArray &html)
{
    try {
        QStringList lines;
        const QList<ParsedEarthquake> events = HTMLParser::parseTable(html);
        for (const ParsedEarthquake &event : events)
            lines.append(described(event));
        return lines.join(QLatin1Char('\n'));
    } catch (const HTMLParserError &error) {
        return error.localizedDescription();
    }
}

const QByteArrayList goodCells = {"es2025abcde", "01/02/2025", "03:04:05", "28.5", "-17.25",
                                  "12",          "III-IV",     "2.7",      "mbLg", "SW VILLA DE MAZO.ILP"};
const char goodEvent[] = "es2025abcde|2025-02-01 03:04:05|28.5|-17.25|12.0|2.7|mbLg|III-IV|SW VILLA DE MAZO.ILP";
const char noTable[] = "No se encontró la tabla de terremotos en la página";
const char noRows[] = "No se pudieron extraer filas de la tabla";

QByteArray rowOf(const QByteArrayList &cells)
{
    return "<tr><td>" + cells.join("</td><td>") + "</td></tr>";
}

/// The good row with another text in one cell.
QByteArray rowWith(int column, const QByteArray &text)
{
    QByteArrayList cells = goodCells;
    cells[column] = text;
    return rowOf(cells);
}

void expect(const char *name, const QByteArray &html, const char *result)
{
    QTest::newRow(name) << html << QString::fromUtf8(result);
}
}

class HTMLParserTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pagesGiveEventsOrTheReason_data()
    {
        QTest::addColumn<QByteArray>("html");
        QTest::addColumn<QString>("result");
        const QByteArray good = rowOf(goodCells);
        const QByteArray header = "<tr><th>Evento</th></tr>";
        const QByteArray cells = good.mid(4, good.size() - 9);
        QByteArray two = goodEvent;
        two += "\n" + two;

        expect("empty", "", noTable);
        expect("no markup", "Mantenimiento", noTable);
        expect("header rows only", header + header, noTable);
        expect("header by a longer name", "<tr><thead>" + cells + "</tr>", noTable);
        expect("header cell in capitals", "<tr><TH>" + cells + "</tr>", noTable);
        expect("header cell in a cell", QByteArray(good).replace("mbLg", "<th>mbLg"), noTable);
        expect("header, then event", header + good, goodEvent);
        expect("not closed", good.chopped(1), noTable);
        expect("not closed, behind a good one", good + "<tr>" + cells, goodEvent);
        expect("nine cells", rowOf(goodCells.mid(0, 9)), noRows);
        expect("layout table", "<table><tr><td>Inicio</td></tr></table>", noRows);
        expect("nine cells, then event", rowOf(goodCells.mid(0, 9)) + good, goodEvent);
        expect("eleven cells", rowOf(goodCells + QByteArrayList{"<form></form>"}), goodEvent);
        expect("tenth cell not closed", rowOf(goodCells).replace("ILP</td>", "ILP"), noRows);
        expect("cell not closed, then event", "<tr><td>x</tr>" + good, goodEvent);
        expect("capitals", "<TABLE>" + QByteArray(good).replace("tr>", "TR>").replace("td>", "TD>"), goodEvent);
        expect("attributes", QByteArray(good).replace("<tr>", "<tr class=\"a\">").replace("<td>", "<td\n id='b'>"),
               goodEvent);
        expect("row in the opening tag of a row", "<tr <tr>" + cells + "</tr>", goodEvent);
        expect("cell tag that ends in the next one's", "<tr><td " + cells + "</tr>", goodEvent);
        expect("cell tag without an end", "<tr>" + cells + "<td </tr>", goodEvent);
        expect("cell within a cell", QByteArray(good).replace("mbLg", "<td>mbLg"), goodEvent);
        expect("twice", good + good, two.constData());
        expect("outside any table", "<div>" + good + "</div>", goodEvent);
        expect("slash that is a control character", QByteArray(good).replace("<tr>", "<tr><\x0ftr>"), goodEvent);
        expect("NUL between rows", QByteArray("\0", 1) + good, goodEvent);
    }

    void pagesGiveEventsOrTheReason()
    {
        QFETCH(QByteArray, html);
        QTEST(outcome(html), "result");
    }

    void cellsBecomeFields_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<QByteArray>("cell");
        QTest::addColumn<QString>("field");
        const auto row = [](const char *name, int column, const QByteArray &cell, const char *field) {
            QTest::newRow(name) << column << cell << QString::fromUtf8(field);
        };
        const char dropped[] = "";
        row("number in a link", 0, "<a href=\"#\" onclick=\"f('x')\">es1</a>", "es1");
        row("number empty", 0, "", dropped);
        row("number blank", 0, "&nbsp;", dropped);
        row("number a byte order mark", 0, "\xEF\xBB\xBF", dropped);
        row("number any text", 0, "a b", "a b");
        row("day padded", 1, " 28/02/2025\t", "2025-02-28 03:04:05");
        row("leap day", 1, "29/02/2024", "2024-02-29 03:04:05");
        row("no leap day", 1, "29/02/2025", dropped);
        row("thirty-first of June", 1, "31/06/2025", dropped);
        row("month 13", 1, "01/13/2025", dropped);
        row("day 0", 1, "00/01/2025", dropped);
        row("day of one digit", 1, "1/02/2025", dropped);
        row("year of two digits", 1, "01/02/25", dropped);
        row("year of five digits", 1, "01/02/20255", dropped);
        row("other order", 1, "2025/02/01", dropped);
        row("dashes", 1, "01-02-2025", dropped);
        row("letter among digits", 1, "01/0a/2025", dropped);
        row("sign among digits", 1, "01/-2/2025", dropped);
        row("last second", 2, "23:59:59", "2025-02-01 23:59:59");
        row("hour 24", 2, "24:00:00", dropped);
        row("minute 60", 2, "03:60:00", dropped);
        row("leap second", 2, "03:59:60", dropped);
        row("time without seconds", 2, "03:04", dropped);
        row("time with a fraction", 2, "03:04:05.5", dropped);
        row("comma", 3, "28,5123", "28.5123");
        row("leading plus", 3, "+28.5", "28.5");
        row("two signs", 3, "+-28.5", dropped);
        row("two pluses", 3, "++28.5", dropped);
        row("exponent", 3, "2.85e1", "28.5");
        row("no leading digit", 3, ".5", "0.5");
        row("no range", 3, "1234.5", "1234.5");
        row("thousands", 3, "1.234,5", dropped);
        row("hexadecimal", 3, "0x1c", dropped);
        row("not a number", 3, "nan", dropped);
        row("infinity", 3, "-inf", dropped);
        row("too large", 3, "1e999", dropped);
        row("too small to tell from zero", 3, "1e-999", dropped);
        row("unit behind", 3, "28.5 N", dropped);
        row("blank within", 3, "28 .5", dropped);
        row("NUL behind", 3, QByteArray("28.5\0", 5), dropped);
        row("empty latitude", 3, "", dropped);
        row("empty longitude", 4, "&nbsp;", dropped);
        row("longitude to the east", 4, "17", "17.0");
        row("depth between blanks", 5, "&nbsp;13.9&nbsp;", "13.9");
        row("depth above the sea", 5, "-1", "-1.0");
        row("empty depth", 5, "", dropped);
        row("intensity blank", 6, "&#160;", "none");
        row("intensity a word", 6, " Sentido ", "Sentido");
        row("negative magnitude", 7, "-0,5", "-0.5");
        row("empty magnitude", 7, "-", dropped);
        row("type blank", 8, "&nbsp;", "—");
        row("type with brackets", 8, "M(mb)", "M(mb)");
        row("place empty", 9, "", "");
        row("place with accents", 9, "NE GÜÍMAR.ITF", "NE GÜÍMAR.ITF");
        row("tags", 9, "<b>EL</b> <i class='x'>PASO</i>", "EL PASO");
        row("tag over two lines", 9, "EL<br\n/> PASO", "EL PASO");
        row("empty brackets", 9, "EL <> PASO", "EL <> PASO");
        row("bracket without an end", 9, "EL < PASO", "EL < PASO");
        row("two opening brackets", 9, "EL<<b> PASO", "EL PASO");
        row("escaped tag", 9, "&lt;b&gt;EL PASO", "<b>EL PASO");
        row("doubly escaped", 9, "&amp;lt;EL PASO", "<EL PASO");
        row("doubly escaped blank by name", 9, "EL&amp;nbsp;PASO", "EL&nbsp;PASO");
        row("doubly escaped blank by number", 9, "EL&amp;#160;PASO", "EL PASO");
        row("three times escaped", 9, "&amp;amp;lt;", "&amp;lt;");
        row("other entities", 9, "&Ntilde;&quot;&NBSP;", "&Ntilde;&quot;&NBSP;");
        row("wide blanks at the ends", 9, "\xC2\xA0\xE2\x80\x83\xE3\x80\x80\xE2\x80\xA9 EL PASO\r\n\v\xC2\x85",
            "EL PASO");
        row("blanks within", 9, "EL  PASO", "EL  PASO");
        row("control characters", 9, "EL\x01\x1b[2J\x7fPASO", "EL\x01\x1b[2J\x7fPASO");
        row("right to left", 9,
            "\xE2\x80\xAE"
            "EL PASO",
            "\xE2\x80\xAE"
            "EL PASO");
        row("script", 9, "<script>alert(1)</script>EL PASO", "alert(1)EL PASO");
    }

    void cellsBecomeFields()
    {
        QFETCH(int, column);
        QFETCH(QByteArray, cell);
        QFETCH(QString, field);
        const QString result = outcome(rowWith(column, cell));
        if (field.isEmpty() && column != 9) {
            QCOMPARE(result, QString::fromUtf8(noRows));
            return;
        }
        QStringList expected = QString::fromUtf8(goodEvent).split(QLatin1Char('|'));
        // Day and time of day are one field.
        expected[column <= 1 ? column : column == 2 ? 1 : std::array{2, 3, 4, 7, 5, 6, 8}[size_t(column - 3)]] = field;
        QCOMPARE(result, expected.join(QLatin1Char('|')));
    }

    void hugePagesGiveTheirEvents_data()
    {
        QTest::addColumn<QByteArray>("html");
        QTest::addColumn<int>("events");
        QTest::addColumn<QString>("location");
        constexpr qsizetype million = 1'000'000;
        const QString place = QStringLiteral("SW VILLA DE MAZO.ILP");
        const QByteArray good = rowOf(goodCells);
        const auto row = [](const char *name, const QByteArray &html, int events, const QString &location) {
            QTest::newRow(name) << html << events << location;
        };
        row("a million nested tags", QByteArray("<div>").repeated(million) + good, 1, place);
        row("a million tags in a cell", rowWith(9, QByteArray("<b>").repeated(million) + "EL PASO"), 1,
            QStringLiteral("EL PASO"));
        row("a million cells", QByteArray(good).replace("</tr>", QByteArray("<td>x</td>").repeated(million)) + "</tr>",
            1, place);
        row("a million opened cells", "<tr>" + QByteArray("<td>").repeated(million) + "</tr>" + good, 1, place);
        row("a million opened rows", good + QByteArray("<tr>").repeated(million), 1, place);
        row("a cell of 10 MB", rowWith(9, QByteArray("&amp;").repeated(2 * million)), 1, QString(2 * million, u'&'));
        row("half the rows bad", (good + rowWith(1, "31/02/2025")).repeated(1000), 1000, place);
    }

    void hugePagesGiveTheirEvents()
    {
        QFETCH(QByteArray, html);
        const QList<ParsedEarthquake> events = HTMLParser::parseTable(html);
        QTEST(int(events.size()), "events");
        QTEST(events.constLast().location, "location");
    }

    void nulStaysInTheText()
    {
        const QList<ParsedEarthquake> events = HTMLParser::parseTable(rowWith(9, QByteArray("EL\0PASO", 7)));
        QCOMPARE(events.constFirst().location, QString::fromLatin1("EL\0PASO", 7));
    }

    void bodiesDecodeByTheirBytes_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("text");
        QTest::newRow("utf-8") << QByteArray("G\xC3\x9C\xC3\x8DMAR") << QStringLiteral("GÜÍMAR");
        QTest::newRow("latin-1") << QByteArray("G\xDC\xCDMAR") << QStringLiteral("GÜÍMAR");
        QTest::newRow("cut off") << QByteArray("GU\xC3") << QStringLiteral("GUÃ");
        QTest::newRow("surrogate") << QByteArray("\xED\xA0\x80") << QStringLiteral("í\u00A0\u0080");
        QTest::newRow("overlong") << QByteArray("\xC0\xBC") << QStringLiteral("À¼");
        QTest::newRow("one bad byte spoils all") << QByteArray("\xC3\x9C\xFF") << QStringLiteral("Ã\u009Cÿ");
        QTest::newRow("charset not believed")
            << QByteArray("<meta charset=latin1>\xC3\x9C") << QStringLiteral("<meta charset=latin1>Ü");
        QTest::newRow("empty") << QByteArray() << QString();
    }

    void bodiesDecodeByTheirBytes()
    {
        QFETCH(QByteArray, body);
        QTEST(QString::fromUtf8(HTMLParser::decoded(body)), "text");
    }

    void answersBecomeEventsOrErrors_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("result");
        const QString invalid = QStringLiteral("Respuesta HTTP inválida");
        const QByteArray good = rowOf(goodCells);
        QTest::newRow("200") << 200 << good << QString::fromUtf8(goodEvent);
        QTest::newRow("299") << 299 << good << QString::fromUtf8(goodEvent);
        QTest::newRow("latin-1") << 200 << rowWith(9, "G\xDC\xCDMAR")
                                 << QString::fromUtf8(goodEvent).replace(QStringLiteral("SW VILLA DE MAZO.ILP"),
                                                                         QStringLiteral("GÜÍMAR"));
        QTest::newRow("empty body") << 200 << QByteArray() << QString::fromUtf8(noTable);
        QTest::newRow("portal page") << 200
                                     << QByteArray("<html><form action='/login'><table><tr><td>Usuario</td><td>"
                                                   "<input></td></tr></table></form></html>")
                                     << QString::fromUtf8(noRows);
        QTest::newRow("204") << 204 << QByteArray() << QString::fromUtf8(noTable);
        for (const int status : {199, 300, 304, 403, 404, 429, 500, 503})
            QTest::addRow("%d", status) << status << good << invalid;
        QTest::newRow("not HTTP") << -1 << good << invalid;
    }

    void answersBecomeEventsOrErrors()
    {
        QFETCH(int, status);
        QFETCH(QByteArray, body);
        FakeURLSession session;
        session.enqueue(URLResponse{body, status < 0 ? std::nullopt : std::optional(status)});
        QTEST(fetched(session), "result");
        QVERIFY(session.requests == std::vector{Region::canaryIslands().dataSourceURL});
    }

    void transportErrorsArriveAsTheyAre()
    {
        FakeURLSession session;
        session.enqueueError(QStringLiteral("sin red"));
        QVERIFY_EXCEPTION_THROWN(IGNDataSource(session).fetchEarthquakes().result(), URLSessionError);
    }

    void networkErrorTellsWhatLiesBelow()
    {
        const auto error =
            HTMLParserError::networkError(std::make_exception_ptr(URLSessionError(QStringLiteral("caído"))));
        QCOMPARE(error.kind(), Kind::networkError);
        QCOMPARE(error.localizedDescription(), QStringLiteral("Error de red: caído"));
        QVERIFY_EXCEPTION_THROWN(std::rethrow_exception(error.underlyingError()), URLSessionError);
    }

    void generatedPageReadsBackAsItWasMade()
    {
        constexpr Instant now{std::chrono::sys_days{std::chrono::year{2025} / 3 / 1}};
        PageGenerator generator(7);
        const QList<ParsedEarthquake> made =
            generator.swarm(900, now, std::chrono::hours(8)) + generator.ordinary(300, now);
        QVERIFY(HTMLParser::parseTable(PageGenerator::page(made)) == made);
    }

private:
    static QString fetched(FakeURLSession &session)
    {
        try {
            const QList<ParsedEarthquake> events = IGNDataSource(session).fetchEarthquakes().result();
            return described(events.constFirst());
        } catch (const HTMLParserError &error) {
            return error.localizedDescription();
        }
    }
};

QTEST_GUILESS_MAIN(HTMLParserTest)
#include "HTMLParserTest.moc"
