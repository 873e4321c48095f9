// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Networking/HTMLParser.h"
#include "Fuzz.h"
#include "Platform/Text/NumberFormat.h"

#include <QDateTime>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <optional>

namespace {
std::optional<ParsedEarthquake> eventOf(const QByteArray &date, const QByteArray &time, const QByteArray &number)
{
    const QByteArrayList cells = {"id", date, time, number, "0", "0", "", "0", "", ""};
    try {
        return HTMLParser::parseTable("<tr><td>" + cells.join("</td><td>") + "</td></tr>").constFirst();
    } catch (const HTMLParserError &) {
        return std::nullopt;
    }
}

/// What the C library reads; absent where it does not take the whole text, or takes what the page never writes.
std::optional<double> readByTheLibrary(QByteArray text)
{
    text = text.replace(',', '.').trimmed();
    errno = 0;
    char *end = nullptr;
    const double value = std::strtod(text.constData(), &end);
    const bool isLost = errno == ERANGE && value == 0;
    const bool isExotic = text.contains('x') || text.contains('X') || !std::isfinite(value) || isLost;
    return text.isEmpty() || *end || isExotic ? std::nullopt : std::optional(value);
}

void checkFormats(double value)
{
    char text[400];
    std::snprintf(text, sizeof text, "%.1f", value);
    require(fixedText(value, 1) == QLatin1String(text));
    require(shortestText(value).toDouble() == value);
}
}

/// Takes a date, a time and a number, a line each, as cells of a row: each is read as the text that it would be
/// written as, or drops the row.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArrayList lines = bytesOf(data, size).split('\n');
    const bool isPlain =
        lines.size() == 3 && std::all_of(data, data + size, [](uint8_t byte) {
            return byte == '\n' || (byte >= ' ' && byte <= '~' && byte != '<' && byte != '>' && byte != '&');
        });
    if (!isPlain)
        return 0;

    const QByteArray date = lines[0].trimmed() + ' ' + lines[1].trimmed();
    const QString form = QStringLiteral("dd/MM/yyyy HH:mm:ss");
    // As universal time: the clocks of this machine skip some times.
    const QDateTime moment(QDate::fromString(QString::fromLatin1(date.left(10)), form.left(10)),
                           QTime::fromString(QString::fromLatin1(date.mid(11)), form.mid(11)), Qt::UTC);
    const bool isDate = moment.isValid() && moment.toString(form).toLatin1() == date;
    if (const auto event = eventOf(lines[0], lines[1], "0"); event && !date.contains("/0000 "))
        require(isDate && event->date.time_since_epoch().count() == moment.toMSecsSinceEpoch());
    else
        require(!isDate);

    const std::optional<double> number = readByTheLibrary(lines[2]);
    const auto event = eventOf("01/02/2025", "03:04:05", lines[2]);
    require(event.has_value() == number.has_value());
    if (!event)
        return 0;
    require(event->latitude == *number);
    checkFormats(event->latitude);
    return 0;
}
