// SPDX-License-Identifier: GPL-3.0-or-later
#include "PageGenerator.h"

#include "Platform/Text/NumberFormat.h"

#include <QDateTime>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace {
constexpr auto tenDays = std::chrono::days(10);
constexpr double kilometresPerDegree = 111.2;

/// A municipality whose name is used in place names.
struct Municipality
{
    const char *name;
    const char *islandCode;
    double latitude;
    double longitude;
};

constexpr std::array municipalities = {
    Municipality{"GUÍA DE ISORA", "ITF", 28.21, -16.75},
    Municipality{"VILAFLOR DE CHASNA", "ITF", 28.18, -16.64},
    Municipality{"SANTIAGO DEL TEIDE", "ITF", 28.30, -16.81},
    Municipality{"ADEJE", "ITF", 28.13, -16.72},
    Municipality{"ARICO", "ITF", 28.17, -16.49},
    Municipality{"FASNIA", "ITF", 28.23, -16.44},
    Municipality{"GÜÍMAR", "ITF", 28.31, -16.41},
    Municipality{"ICOD DE LOS VINOS", "ITF", 28.35, -16.71},
    Municipality{"EL PASO", "ILP", 28.65, -17.86},
    Municipality{"FUENCALIENTE DE LA PALMA", "ILP", 28.49, -17.85},
    Municipality{"BREÑA BAJA", "ILP", 28.63, -17.79},
    Municipality{"FRONTERA", "IHI", 27.76, -18.02},
    Municipality{"EL PINAR DE EL HIERRO", "IHI", 27.69, -17.98},
    Municipality{"AGÜIMES", "IGC", 27.90, -15.45},
    Municipality{"GÁLDAR", "IGC", 28.14, -15.65},
    Municipality{"YAIZA", "ILZ", 28.95, -13.77},
    Municipality{"PÁJARA", "IFV", 28.35, -14.11},
};
constexpr Municipality swarmCentre{"FUENCALIENTE DE LA PALMA", "ILP", 28.49, -17.85};

/// By steps of 45 degrees from north, clockwise.
constexpr std::array bearings = {"N", "NE", "E", "SE", "S", "SW", "W", "NW"};

/// Longest place name that the page holds; what is longer is cut.
constexpr qsizetype longestLocation = 30;

QString locationText(const char *bearing, const Municipality &municipality)
{
    const QString text = QStringLiteral("%1 %2.%3")
                             .arg(QString::fromLatin1(bearing), QString::fromUtf8(municipality.name),
                                  QString::fromLatin1(municipality.islandCode));
    return text.left(longestLocation);
}

/// `distanceKm` from a municipality, `turn` steps of 45 degrees clockwise of north.
void place(ParsedEarthquake &event, const Municipality &municipality, double turn, double distanceKm)
{
    const double angle = turn * std::numbers::pi / 4;
    const double parallel = std::cos(municipality.latitude * std::numbers::pi / 180);
    event.latitude = municipality.latitude + distanceKm * std::cos(angle) / kilometresPerDegree;
    event.longitude = municipality.longitude + distanceKm * std::sin(angle) / (kilometresPerDegree * parallel);
    const auto nearest = size_t(std::lround(turn)) % bearings.size();
    event.location = locationText(bearings[nearest], municipality);
}

/// The intensity that people near an event of this magnitude report; absent where nobody feels it.
std::optional<QString> feltIntensity(double magnitude)
{
    if (magnitude >= 4.5)
        return QStringLiteral("IV-V");
    if (magnitude >= 4.0)
        return QStringLiteral("IV");
    if (magnitude >= 3.5)
        return QStringLiteral("III-IV");
    if (magnitude >= 3.1)
        return QStringLiteral("II");
    return std::nullopt;
}

/// Rounded to the digits that the page shows, so that a made event equals the one read back from its page.
double rounded(double value, int decimals)
{
    return fixedText(value, decimals).toDouble();
}

/// One row, in one of the three forms of mark-up that stand in turn on the page: a parser must not lean on any.
QByteArray rowMarkup(const ParsedEarthquake &event, qsizetype number)
{
    const QDateTime date = QDateTime::fromMSecsSinceEpoch(event.date.time_since_epoch().count(), Qt::UTC);
    const QString form =
        QStringLiteral("<form method=\"get\" action=\"#\"><input type=\"hidden\" name=\"id\" value=\"%1\">"
                       "<input type=\"submit\" value=\"+\"></form>");
    const std::array cells = {
        QStringLiteral("<a href=\"#%1\" onclick=\"return show('%1', this.title);\" title=\"Ver %1\">%1</a>")
            .arg(event.eventID),
        date.toString(QStringLiteral("dd/MM/yyyy")),
        date.toString(QStringLiteral("HH:mm:ss")),
        fixedText(event.latitude, 4),
        fixedText(event.longitude, 4),
        QStringLiteral("&nbsp;%1&nbsp;").arg(shortestText(event.depth)),
        event.maxIntensity.value_or(QStringLiteral("&nbsp;")),
        QStringLiteral("&nbsp;%1&nbsp;").arg(fixedText(event.magnitude, 1)),
        event.magnitudeType,
        event.location,
        form.arg(event.eventID),
    };
    constexpr std::array openRow = {"<tr class=\"fila\">\n", "<TR\n\tclass='fila par'>\n", "<tr>"};
    constexpr std::array openCell = {"  <td class=\"celda\" headers=\"c%1\">", "\t<TD headers='c%1' align=right\n\t>",
                                     "<td>"};
    constexpr std::array closeCell = {"</td>\n", "\r\n\t</TD>\r\n", "</td>"};
    constexpr std::array closeRow = {"</tr>\n", "</TR>\r\n", "</tr>\n"};
    const size_t variant = size_t(number % qsizetype(openRow.size()));
    QByteArray html(openRow[variant]);
    for (size_t i = 0; i < cells.size(); ++i)
        html += QByteArray(openCell[variant]).replace("%1", QByteArray::number(qsizetype(i))) + cells[i].toUtf8()
            + closeCell[variant];
    return html + closeRow[variant];
}
}

QList<ParsedEarthquake> PageGenerator::ordinary(int count, Instant now)
{
    QList<ParsedEarthquake> events;
    for (int i = 0; i < count; ++i)
        events.append(ordinaryEvent(moment(now, tenDays)));
    sortNewestFirst(events);
    return events;
}

QList<ParsedEarthquake> PageGenerator::swarm(int count, Instant now, std::chrono::milliseconds length)
{
    QList<ParsedEarthquake> events;
    for (int i = 0; i < count; ++i)
        events.append(swarmEvent(moment(now, length)));
    sortNewestFirst(events);
    return events;
}

ParsedEarthquake PageGenerator::ordinaryEvent(Instant date)
{
    ParsedEarthquake event;
    event.eventID = eventID(date);
    event.date = std::chrono::floor<std::chrono::seconds>(date);
    if (index(12) == 0) {
        event.latitude = between(26.8, 29.6);
        event.longitude = between(-19.2, -14.8);
        event.location = QStringLiteral("ATLÁNTICO-CANARIAS");
    } else {
        const Municipality &municipality = municipalities[size_t(index(int(municipalities.size())))];
        place(event, municipality, between(0, double(bearings.size())), between(1, 14));
    }
    event.latitude = rounded(event.latitude, 4);
    event.longitude = rounded(event.longitude, 4);
    event.depth = index(6) == 0 ? 0 : rounded(between(1, 34), index(2));
    event.magnitude = rounded(magnitude(-0.5, 3.8), 1);
    event.magnitudeType = index(20) == 0 ? QStringLiteral("M(mb)") : QStringLiteral("mbLg");
    event.maxIntensity = feltIntensity(event.magnitude);
    return event;
}

ParsedEarthquake PageGenerator::swarmEvent(Instant date)
{
    const bool isDeep = index(4) == 0;
    ParsedEarthquake event;
    event.eventID = eventID(date);
    event.date = std::chrono::floor<std::chrono::seconds>(date);
    // From north to east, where the clouds lie seen from the municipality.
    place(event, swarmCentre, between(-0.4, 2.4), between(3, isDeep ? 14 : 10));
    event.latitude = rounded(event.latitude, 4);
    event.longitude = rounded(event.longitude, 4);
    event.depth = rounded(isDeep ? between(30, 40) : between(10, 15), index(2));
    event.magnitude = rounded(magnitude(isDeep ? 2.4 : 1.6, 5.1), 1);
    event.magnitudeType = event.magnitude >= 4.5 ? QStringLiteral("Mw") : QStringLiteral("mbLg");
    event.maxIntensity = feltIntensity(event.magnitude);
    return event;
}

void PageGenerator::sortNewestFirst(QList<ParsedEarthquake> &events)
{
    std::stable_sort(events.begin(), events.end(),
                     [](const ParsedEarthquake &a, const ParsedEarthquake &b) { return a.date > b.date; });
}

std::chrono::milliseconds PageGenerator::pause(std::chrono::milliseconds least, std::chrono::milliseconds greatest)
{
    return std::chrono::milliseconds(qint64(between(double(least.count()), double(greatest.count()))));
}

QByteArray PageGenerator::page(const QList<ParsedEarthquake> &earthquakes)
{
    QByteArray html(
        "<!DOCTYPE html>\n<html lang=\"es\">\n<head><meta charset=\"UTF-8\"><title>Terremotos</title></head>\n"
        "<body>\n<h1>Últimos diez días</h1>\n"
        "<!-- a table that only lays out -->\n<table class=\"marco\">\n<tr><td>Ayuda</td><td>Mapa</td></tr>\n</table>\n"
        "<table id=\"lista\" class=\"datos ordenable\">\n<caption>Islas Canarias</caption>\n<thead>\n<tr>\n");
    constexpr std::array columns = {"Evento",     "Fecha",    "Hora UTC", "Latitud", "Longitud", "Profundidad",
                                    "Intensidad", "Magnitud", "Tipo",     "Lugar",   "Más"};
    for (size_t i = 0; i < columns.size(); ++i) {
        html += "\t<TH scope='col' id=\"c" + QByteArray::number(qsizetype(i)) + "\">";
        html += columns[i];
        html += "</TH>\n";
    }
    html += "</tr>\n</thead>\n<tbody>\n";
    qsizetype number = 0;
    for (const ParsedEarthquake &event : earthquakes)
        html += rowMarkup(event, number++);
    html += "</tbody>\n</table>\n</body>\n</html>\n";
    return html;
}

/// Evenly spread. The distributions of the standard library differ from one library to the next.
double PageGenerator::between(double low, double high)
{
    return low + (high - low) * double(m_engine()) / double(std::mt19937::max());
}

/// 0 to `count` - 1.
int PageGenerator::index(int count)
{
    return int(m_engine() % std::mt19937::result_type(count));
}

/// Ten times fewer events for each step of one in magnitude.
double PageGenerator::magnitude(double least, double greatest)
{
    return std::min(greatest, least - std::log10(std::max(between(0, 1), 1e-9)));
}

/// "es", the year and five letters.
QString PageGenerator::eventID(Instant date)
{
    const auto year = std::chrono::year_month_day(std::chrono::floor<std::chrono::days>(date)).year();
    QString id = QStringLiteral("es%1").arg(int(year));
    for (int letter = 0; letter < 5; ++letter)
        id += QLatin1Char(char('a' + index(26)));
    return id;
}

Instant PageGenerator::moment(Instant now, std::chrono::milliseconds length)
{
    return now - pause(std::chrono::milliseconds::zero(), length);
}
