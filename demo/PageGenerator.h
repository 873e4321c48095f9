// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/ParsedEarthquake.h"

#include <QByteArray>
#include <QList>

#include <random>

/// Makes up events that look like the institute's, and pages of them. The same seed gives the same events on every
/// machine. Positions and names go together: a name is a bearing from a municipality, with the code of its island.
class PageGenerator
{
public:
    explicit PageGenerator(quint32 seed)
        : m_engine(seed)
    {
    }

    /// Events as in quiet days, at random moments of the ten days before `now`, newest first.
    QList<ParsedEarthquake> ordinary(int count, Instant now);
    /// Events as in a volcanic swarm under the south of La Palma, at random moments of the `length` before `now`,
    /// newest first: two clouds, one 10 to 15 km deep and one 30 to 40, magnitudes up to 5.1.
    QList<ParsedEarthquake> swarm(int count, Instant now, std::chrono::milliseconds length);
    /// One event of quiet days at `date`.
    ParsedEarthquake ordinaryEvent(Instant date);
    /// One event of the swarm at `date`.
    ParsedEarthquake swarmEvent(Instant date);

    static void sortNewestFirst(QList<ParsedEarthquake> &events);

    /// A length of time between two others.
    std::chrono::milliseconds pause(std::chrono::milliseconds least, std::chrono::milliseconds greatest);

    /// The page that lists `earthquakes` in their order, as UTF-8. Texts stand in it as they are: markup in a place
    /// name is markup in the page.
    static QByteArray page(const QList<ParsedEarthquake> &earthquakes);

private:
    double between(double low, double high);
    int index(int count);
    double magnitude(double least, double greatest);
    QString eventID(Instant date);
    Instant moment(Instant now, std::chrono::milliseconds length);

    std::mt19937 m_engine;
};
