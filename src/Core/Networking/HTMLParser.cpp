// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Networking/HTMLParser.h"

#include <QUtf8StringView>
#include <QVarLengthArray>

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

namespace {
/// Where each value stands in a row.
struct Col
{
    enum Index : qsizetype {
        eventID,
        date,
        timeUTC,
        latitude,
        longitude,
        depth,
        maxIntensity,
        magnitude,
        magnitudeType,
        location,
        count
    };
};

using Cells = QVarLengthArray<QByteArrayView, Col::count>;

/// Position of the next `wanted` at or behind `from`; the end of the text where there is none.
qsizetype find(QByteArrayView text, char wanted, qsizetype from)
{
    const void *hit = std::memchr(text.data() + from, wanted, size_t(text.size() - from));
    return hit ? static_cast<const char *>(hit) - text.data() : text.size();
}

/// Whether `tag`, which is in lower case, stands at `at`. Compares ASCII letters without regard to case; setting the
/// case bit alone would also turn control characters into "/".
bool tagStandsAt(QByteArrayView text, qsizetype at, QByteArrayView tag)
{
    if (text.size() - at < tag.size())
        return false;
    return std::equal(tag.begin(), tag.end(), text.begin() + at, [](char wanted, char met) {
        return wanted == (met >= 'A' && met <= 'Z' ? char(met | 0x20) : met);
    });
}

/// Steps through the data rows of a page: those from a "<tr" to a "</tr>" that hold no header cell. Rows and their
/// cells are found in the same sweep over the page, which stops at each "<" once and never goes back.
class TableRows
{
public:
    explicit TableRows(QByteArrayView html)
        : m_html(html)
    {
    }

    /// Moves to the next data row. False when there is none: a row that is not closed is none.
    bool next()
    {
        while (readRow())
            if (!m_isHeader)
                return true;
        return false;
    }

    /// What lies between the opening and the closing tags of the row's first cells, at most as many as there are
    /// columns. A cell that is not closed ends the row.
    const Cells &cells() const { return m_cells; }

private:
    enum class Place { betweenCells, inOpeningTag, inCell };

    bool readRow()
    {
        m_cells.clear();
        m_isHeader = false;
        m_place = Place::betweenCells;
        while (m_at < m_html.size() && !tagStandsAt(m_html, m_at, rowOpening))
            m_at = find(m_html, '<', m_at + 1);
        while (m_at < m_html.size()) {
            m_at = find(m_html, '<', m_at + 1);
            if (tagStandsAt(m_html, m_at, rowClosing))
                return true;
            meetTag();
        }
        return false;
    }

    /// Takes note of the "<" at which the sweep stands, inside a row.
    void meetTag()
    {
        if (m_place == Place::inOpeningTag) {
            const qsizetype tagEnd = find(m_html.first(m_at), '>', m_from);
            m_place = tagEnd < m_at ? Place::inCell : Place::inOpeningTag;
            m_from = tagEnd < m_at ? tagEnd + 1 : m_at;
        }
        if (tagStandsAt(m_html, m_at, headerCell)) {
            m_isHeader = true;
        } else if (m_place == Place::betweenCells && tagStandsAt(m_html, m_at, cellOpening)) {
            m_place = Place::inOpeningTag;
            m_from = m_at + cellOpening.size();
        } else if (m_place == Place::inCell && tagStandsAt(m_html, m_at, cellClosing)) {
            m_place = Place::betweenCells;
            if (m_cells.size() < Col::count)
                m_cells.append(m_html.sliced(m_from, m_at - m_from));
        }
    }

    static constexpr QByteArrayView rowOpening{"<tr"};
    static constexpr QByteArrayView rowClosing{"</tr>"};
    static constexpr QByteArrayView headerCell{"<th"};
    static constexpr QByteArrayView cellOpening{"<td"};
    static constexpr QByteArrayView cellClosing{"</td>"};

    QByteArrayView m_html;
    qsizetype m_at = 0;
    /// Where the search for the end of the opening tag goes on, or where the content of the cell begins.
    qsizetype m_from = 0;
    Place m_place = Place::betweenCells;
    bool m_isHeader = false;
    Cells m_cells;
};

/// Shortens a text in one sweep that closes the gaps as it goes. Erasing in place would move the tail once for each
/// gap, which takes half a minute for a few megabytes of entities.
class Shortening
{
public:
    explicit Shortening(std::string &text)
        : m_text(text)
    {
    }
    ~Shortening() { m_text.resize(m_kept); }
    Q_DISABLE_COPY_MOVE(Shortening)

    /// The characters from `begin` to before `end` stay. Never called for a place that lies before the last one.
    void keep(size_t begin, size_t end)
    {
        if (begin != m_kept)
            std::memmove(m_text.data() + m_kept, m_text.data() + begin, end - begin);
        m_kept += end - begin;
    }

    /// `character` stands for something longer that is left out.
    void put(char character) { m_text[m_kept++] = character; }

private:
    std::string &m_text;
    size_t m_kept = 0;
};

/// Removes everything from a "<" to the next ">", where at least one character lies between them.
void removeTags(std::string &text)
{
    Shortening shortening(text);
    size_t from = 0;
    for (size_t tag = text.find('<'); tag != std::string::npos; tag = text.find('<', from)) {
        const size_t tagEnd = text.find('>', tag);
        if (tagEnd == std::string::npos)
            break;
        const bool isEmpty = tagEnd == tag + 1;
        shortening.keep(from, isEmpty ? tagEnd : tag);
        from = isEmpty ? tagEnd : tagEnd + 1;
    }
    shortening.keep(from, text.size());
}

void replaceAll(std::string &text, std::string_view entity, char replacement)
{
    Shortening shortening(text);
    size_t from = 0;
    for (size_t match = text.find(entity); match != std::string::npos; match = text.find(entity, from)) {
        shortening.keep(from, match);
        shortening.put(replacement);
        from = match + entity.size();
    }
    shortening.keep(from, text.size());
}

/// Blanks and line ends beyond ASCII, in UTF-8: U+0085, U+00A0, U+1680, U+2000 to U+200A, U+2028, U+2029, U+202F,
/// U+205F, U+3000.
constexpr std::array<std::string_view, 19> wideSpaces = {
    "\xC2\x85",     "\xC2\xA0",     "\xE1\x9A\x80", "\xE2\x80\x80", "\xE2\x80\x81", "\xE2\x80\x82", "\xE2\x80\x83",
    "\xE2\x80\x84", "\xE2\x80\x85", "\xE2\x80\x86", "\xE2\x80\x87", "\xE2\x80\x88", "\xE2\x80\x89", "\xE2\x80\x8A",
    "\xE2\x80\xA8", "\xE2\x80\xA9", "\xE2\x80\xAF", "\xE2\x81\x9F", "\xE3\x80\x80"};

bool isAsciiSpace(char character)
{
    return character == ' ' || (character >= '\t' && character <= '\r');
}

/// Length in bytes of the blank or line end for which `stands` holds at one end of a text, where `character` is the
/// byte at that end; 0 where there is none.
template<class Stands>
size_t spaceLength(char character, Stands stands)
{
    if (isAsciiSpace(character))
        return 1;
    if (static_cast<unsigned char>(character) < 0x80)
        return 0;
    const auto space = std::find_if(wideSpaces.begin(), wideSpaces.end(), stands);
    return space == wideSpaces.end() ? 0 : space->size();
}

/// `text` without blanks and line ends at both ends.
std::string_view trimmed(std::string_view text)
{
    const auto atStart = [&text](std::string_view space) { return text.starts_with(space); };
    const auto atEnd = [&text](std::string_view space) { return text.ends_with(space); };
    size_t length = 0;
    while (!text.empty() && (length = spaceLength(text.front(), atStart)) > 0)
        text.remove_prefix(length);
    while (!text.empty() && (length = spaceLength(text.back(), atEnd)) > 0)
        text.remove_suffix(length);
    return text;
}

/// The text that a cell shows. Tags go first and entities later, so that an escaped tag survives as text; "&amp;" goes
/// before the signs that it may itself escape.
std::string cleanText(QByteArrayView cell)
{
    std::string text(cell.data(), size_t(cell.size()));
    removeTags(text);
    if (text.find('&') != std::string::npos) {
        replaceAll(text, "&nbsp;", ' ');
        replaceAll(text, "&amp;", '&');
        replaceAll(text, "&lt;", '<');
        replaceAll(text, "&gt;", '>');
        replaceAll(text, "&#160;", ' ');
    }
    return std::string(trimmed(text));
}

/// The number that stands in `digits` and nowhere else; -1 where another character stands among them.
int wholeNumber(std::string_view digits)
{
    int value = 0;
    for (const char digit : digits) {
        if (digit < '0' || digit > '9')
            return -1;
        value = value * 10 + (digit - '0');
    }
    return value;
}

/// The instant of a day "dd/MM/yyyy" and a time of day "HH:mm:ss", both UTC. Absent for any other form, and for a day
/// that the calendar or a time that the clock does not have.
std::optional<Instant> parseDate(std::string_view date, std::string_view time)
{
    if (date.size() != 10 || date[2] != '/' || date[5] != '/')
        return std::nullopt;
    if (time.size() != 8 || time[2] != ':' || time[5] != ':')
        return std::nullopt;
    const int day = wholeNumber(date.substr(0, 2));
    const int month = wholeNumber(date.substr(3, 2));
    const int year = wholeNumber(date.substr(6, 4));
    const int hour = wholeNumber(time.substr(0, 2));
    const int minute = wholeNumber(time.substr(3, 2));
    const int second = wholeNumber(time.substr(6, 2));
    if (std::min({day, month, year, hour, minute, second}) < 0 || hour > 23 || minute > 59 || second > 59)
        return std::nullopt;
    const auto calendarDay = std::chrono::year(year) / month / day;
    if (!calendarDay.ok())
        return std::nullopt;
    return std::chrono::sys_days(calendarDay) + std::chrono::hours(hour) + std::chrono::minutes(minute)
        + std::chrono::seconds(second);
}

/// A decimal number written with a point or a comma, whatever the locale. Absent where anything else stands in the
/// text, and for what a double cannot hold: too large, or too small to tell from zero.
std::optional<double> parseDecimal(std::string text)
{
    std::replace(text.begin(), text.end(), ',', '.');
    std::string_view number = trimmed(text);
    if (number.starts_with('+') && !number.starts_with("+-"))
        number.remove_prefix(1);
    double value = 0;
    const char *const end = number.data() + number.size();
    const auto [rest, error] = std::from_chars(number.data(), end, value);
    if (error != std::errc() || rest != end || !std::isfinite(value))
        return std::nullopt;
    return value;
}

/// The event of a data row; absent where a cell that cannot be missing is.
std::optional<ParsedEarthquake> parseRow(const Cells &cells)
{
    const auto text = [&cells](Col::Index column) { return QString::fromStdString(cleanText(cells[column])); };
    // Asked of the QString: the conversion drops a byte order mark, which may be all that the cell holds.
    const QString eventID = text(Col::eventID);
    if (eventID.isEmpty())
        return std::nullopt;
    const auto date = parseDate(cleanText(cells[Col::date]), cleanText(cells[Col::timeUTC]));
    if (!date)
        return std::nullopt;
    const auto latitude = parseDecimal(cleanText(cells[Col::latitude]));
    const auto longitude = parseDecimal(cleanText(cells[Col::longitude]));
    const auto depth = parseDecimal(cleanText(cells[Col::depth]));
    const auto magnitude = parseDecimal(cleanText(cells[Col::magnitude]));
    if (!latitude || !longitude || !depth || !magnitude)
        return std::nullopt;
    const QString magnitudeType = text(Col::magnitudeType);
    const QString maxIntensity = text(Col::maxIntensity);
    return ParsedEarthquake{
        .eventID = eventID,
        .date = *date,
        .latitude = *latitude,
        .longitude = *longitude,
        .depth = *depth,
        .magnitude = *magnitude,
        .magnitudeType = magnitudeType.isEmpty() ? QStringLiteral("—") : magnitudeType,
        .maxIntensity = maxIntensity.isEmpty() ? std::nullopt : std::optional(maxIntensity),
        .location = text(Col::location),
    };
}
}

QFuture<QList<ParsedEarthquake>> HTMLParser::fetchAndParse(const QUrl &url) const
{
    return fetchHTML(url).then([](const QByteArray &html) { return parseTable(html); });
}

QFuture<QByteArray> HTMLParser::fetchHTML(const QUrl &url) const
{
    return m_session.data(url).then([](const URLResponse &response) {
        const int status = response.statusCode.value_or(0);
        if (status < 200 || status > 299)
            throw HTMLParserError(HTMLParserError::Kind::invalidResponse);
        return decoded(response.body);
    });
}

QByteArray HTMLParser::decoded(const QByteArray &body)
{
    // The check is strict: it also refuses a sequence that the end of the body cuts off.
    if (QUtf8StringView(body).isValidUtf8())
        return body;
    return QString::fromLatin1(body).toUtf8();
}

QList<ParsedEarthquake> HTMLParser::parseTable(QByteArrayView html)
{
    TableRows rows(html);
    bool foundRow = false;
    QList<ParsedEarthquake> earthquakes;
    while (rows.next()) {
        foundRow = true;
        if (rows.cells().size() < Col::count)
            continue;
        if (auto earthquake = parseRow(rows.cells()))
            earthquakes.append(std::move(*earthquake));
    }
    if (!foundRow)
        throw HTMLParserError(HTMLParserError::Kind::noTableFound);
    if (earthquakes.isEmpty())
        throw HTMLParserError(HTMLParserError::Kind::noRowsParsed);
    return earthquakes;
}
