// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Networking/HTMLParser.h"
#include "Core/DataSources/IGNDataSource.h"
#include "Core/Models/Region.h"
#include "Platform/Text/NumberFormat.h"
#include "Support/FakeURLSession.h"
#include "Support/Table.h"
#include "Support/TestInstant.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {
QString described(const ParsedEarthquake &event)
{
    return QStringList({event.eventID, isoText(event.date), shortestText(event.latitude), shortestText(event.longitude),
                        shortestText(event.depth), shortestText(event.magnitude), event.magnitudeType,
                        event.maxIntensity.value_or(u"none"_s), event.location})
        .join(u'|');
}

/// What a page answered with this status becomes: one line for each event, or the error's own text.
QString outcome(const QByteArray &html, std::optional<int> status = 200)
{
    FakeURLSession session;
    session.enqueue(URLResponse{html, status});
    try {
        QStringList lines;
        const QList<ParsedEarthquake> events = IGNDataSource(session).fetchEarthquakes().result();
        for (const ParsedEarthquake &event : events)
            lines.append(described(event));
        return lines.join(u'\n');
    } catch (const HTMLParserError &error) {
        return error.localizedDescription();
    }
}

const QByteArrayList goodCells = {"es2025abcde", "01/02/2025", "03:04:05", "28.5", "-17.25",
                                  "12",          "III-IV",     "2.7",      "mbLg", "SW VILLA DE MAZO.ILP"};
const char goodEvent[] = "es2025abcde|2025-02-01T03:04:05Z|28.5|-17.25|12.0|2.7|mbLg|III-IV|SW VILLA DE MAZO.ILP";
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
}

class HTMLParserTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pagesGiveEventsOrTheReason_data()
    {
        const Table<QByteArray, QString> row;
        const QByteArray good = rowOf(goodCells);
        const QByteArray header = "<tr><th>Evento</th></tr>";
        const QByteArray cells = good.mid(4, good.size() - 9);
        QByteArray two = goodEvent;
        two += "\n" + two;

        row("empty", "", noTable);
        row("header by a longer name", "<tr><thead>" + cells + "</tr>", noTable);
        row("header cell in capitals", "<tr><TH>" + cells + "</tr>", noTable);
        row("header cell in a cell", QByteArray(good).replace("mbLg", "<th>mbLg"), noTable);
        row("header, then event", header + good, goodEvent);
        row("not closed", good.chopped(1), noTable);
        row("not closed, behind a good one", good + "<tr>" + cells, goodEvent);
        row("nine cells", rowOf(goodCells.mid(0, 9)), noRows);
        row("eleven cells", rowOf(goodCells + QByteArrayList{"<form></form>"}), goodEvent);
        row("tenth cell not closed", rowOf(goodCells).replace("ILP</td>", "ILP"), noRows);
        row("cell not closed, then event", "<tr><td>x</tr>" + good, goodEvent);
        row("capitals", "<TABLE>" + QByteArray(good).replace("tr>", "TR>").replace("td>", "TD>"), goodEvent);
        row("attributes", QByteArray(good).replace("<tr>", "<tr class=\"a\">").replace("<td>", "<td\n id='b'>"),
            goodEvent);
        row("row in the opening tag of a row", "<tr <tr>" + cells + "</tr>", goodEvent);
        row("cell tag that ends in the next one's", "<tr><td " + cells + "</tr>", goodEvent);
        row("cell tag without an end", "<tr>" + cells + "<td </tr>", goodEvent);
        row("cell within a cell", QByteArray(good).replace("mbLg", "<td>mbLg"), goodEvent);
        row("twice", good + good, two.constData());
        row("portal page", "<form action='/login'><table><tr><td>Usuario</td></tr></table></form>", noRows);
        row("slash that is a control character", QByteArray(good).replace("<tr>", "<tr><\x0ftr>"), goodEvent);
    }

    void pagesGiveEventsOrTheReason()
    {
        const auto [html, expected] = Table<QByteArray, QString>::current();
        QCOMPARE(outcome(html), expected);
    }

    void cellsBecomeFields_data()
    {
        const Table<int, QByteArray, QString> row;
        const char dropped[] = "";
        row("number in a link", 0, "<a href=\"#\" onclick=\"f('x')\">es1</a>", "es1");
        row("number blank", 0, "&nbsp;", dropped);
        row("number a byte order mark", 0, "\xEF\xBB\xBF", dropped);
        row("day padded", 1, " 28/02/2025\t", "2025-02-28T03:04:05Z");
        row("leap day", 1, "29/02/2024", "2024-02-29T03:04:05Z");
        row("no leap day", 1, "29/02/2025", dropped);
        row("month 13", 1, "01/13/2025", dropped);
        row("year of five digits", 1, "01/02/20255", dropped);
        row("sign among digits", 1, "01/-2/2025", dropped);
        row("last second", 2, "23:59:59", "2025-02-01T23:59:59Z");
        row("hour 24", 2, "24:00:00", dropped);
        row("minute 60", 2, "03:60:00", dropped);
        row("leap second", 2, "03:59:60", dropped);
        row("leading plus", 3, "+28.5", "28.5");
        row("two signs", 3, "+-28.5", dropped);
        row("exponent", 3, "2.85e1", "28.5");
        row("thousands", 3, "1.234,5", dropped);
        row("infinity", 3, "-inf", dropped);
        row("too large", 3, "1e999", dropped);
        row("too small to tell from zero", 3, "1e-999", dropped);
        row("empty latitude", 3, "", dropped);
        row("empty longitude", 4, "&nbsp;", dropped);
        row("empty depth", 5, "", dropped);
        row("intensity blank", 6, "&#160;", "none");
        row("negative magnitude", 7, "-0,5", "-0.5");
        row("empty magnitude", 7, "-", dropped);
        row("type blank", 8, "&nbsp;", "—");
        row("place empty", 9, "", "");
        row("NUL", 9, QByteArray("EL\0PASO", 7), QString::fromLatin1("EL\0PASO", 7));
        row("tag over two lines", 9, "EL<br\n/> PASO", "EL PASO");
        row("empty brackets", 9, "EL <> PASO", "EL <> PASO");
        row("bracket without an end", 9, "EL < PASO", "EL < PASO");
        row("two opening brackets", 9, "EL<<b> PASO", "EL PASO");
        row("escaped tag", 9, "&lt;b&gt;EL PASO", "<b>EL PASO");
        row("doubly escaped", 9, "&amp;lt;EL PASO", "<EL PASO");
        row("doubly escaped blank by number", 9, "EL&amp;#160;PASO", "EL PASO");
        row("other entities", 9, "&Ntilde;&quot;&NBSP;", "&Ntilde;&quot;&NBSP;");
        row("wide blanks at the ends", 9, "\xC2\xA0\xE2\x80\x83\xE3\x80\x80\xE2\x80\xA9 EL PASO\r\n\v\xC2\x85",
            "EL PASO");
    }

    void cellsBecomeFields()
    {
        const auto [column, cell, field] = Table<int, QByteArray, QString>::current();
        const QString result = outcome(rowWith(column, cell));
        QStringList expected = QString::fromUtf8(goodEvent).split(u'|');
        // Day and time of day are one field.
        expected[column <= 1 ? column : column == 2 ? 1 : std::array{2, 3, 4, 7, 5, 6, 8}[size_t(column - 3)]] = field;
        const bool isDropped = field.isEmpty() && column != 9;
        QCOMPARE(result, isDropped ? QString::fromUtf8(noRows) : expected.join(u'|'));
    }

    void hugePagesGiveTheirEvents_data()
    {
        const Table<QByteArray, int, QString> row;
        constexpr qsizetype million = 1'000'000;
        const QString place = QString::fromLatin1(goodCells.constLast());
        const QByteArray good = rowOf(goodCells);
        row("a million tags in a cell", rowWith(9, QByteArray("<b>").repeated(million) + "EL PASO"), 1, "EL PASO");
        row("a million opened cells", "<tr>" + QByteArray("<td>").repeated(million) + "</tr>" + good, 1, place);
        row("a million opened rows", good + QByteArray("<tr>").repeated(million), 1, place);
        row("a cell of 10 MB", rowWith(9, QByteArray("&amp;").repeated(2 * million)), 1, QString(2 * million, u'&'));
        row("half the rows bad", (good + rowWith(1, "31/02/2025")).repeated(1000), 1000, place);
    }

    void hugePagesGiveTheirEvents()
    {
        const auto [html, expectedEvents, expectedLocation] = Table<QByteArray, int, QString>::current();
        const QList<ParsedEarthquake> events = HTMLParser::parseTable(html);
        QCOMPARE(int(events.size()), expectedEvents);
        QCOMPARE(events.constLast().location, expectedLocation);
    }

    void bodiesDecodeByTheirBytes_data()
    {
        const Table<QByteArray, QString> row;
        row("utf-8", QByteArray("G\xC3\x9C\xC3\x8DMAR"), "GÜÍMAR");
        row("latin-1", QByteArray("G\xDC\xCDMAR"), "GÜÍMAR");
        row("cut off", QByteArray("GU\xC3"), "GUÃ");
        row("overlong", QByteArray("\xC0\xBC"), "À¼");
        row("one bad byte spoils all", QByteArray("\xC3\x9C\xFF"), u"Ã\u009Cÿ"_s);
    }

    void bodiesDecodeByTheirBytes()
    {
        const auto [place, expected] = Table<QByteArray, QString>::current();
        QCOMPARE(outcome(rowWith(9, place)).section(u'|', -1), expected);
    }

    void answersBecomeEventsOrErrors()
    {
        const QByteArray good = rowOf(goodCells);
        for (const int status : {200, 299})
            QCOMPARE(outcome(good, status), QString::fromUtf8(goodEvent));
        QCOMPARE(outcome({}, 204), QString::fromUtf8(noTable));
        for (const std::optional<int> status : {std::optional(199), std::optional(300), std::optional<int>()})
            QCOMPARE(outcome(good, status), u"Respuesta HTTP inválida"_s);
    }

    void transportErrorsArriveAsTheyAre()
    {
        FakeURLSession session;
        session.enqueueError(u"sin red"_s);
        QVERIFY_EXCEPTION_THROWN(IGNDataSource(session).fetchEarthquakes().result(), URLSessionError);
        QCOMPARE(session.requests, std::vector{Region::canaryIslands().dataSourceURL});
    }

    void networkErrorTellsWhatLiesBelow()
    {
        const auto error = HTMLParserError::networkError(std::make_exception_ptr(URLSessionError(u"caído"_s)));
        QCOMPARE(error.kind(), HTMLParserError::Kind::networkError);
        QCOMPARE(error.localizedDescription(), u"Error de red: caído"_s);
        QVERIFY_EXCEPTION_THROWN(std::rethrow_exception(error.underlyingError()), URLSessionError);
    }

    void regionSpeaksItsOwnLanguage() { QCOMPARE(Region::canaryIslands().locale, QLocale(u"es_ES"_s)); }
};

QTEST_GUILESS_MAIN(HTMLParserTest)
#include "HTMLParserTest.moc"
