// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "PageGenerator.h"

#include <QByteArray>
#include <QList>

/// What the made-up institute knows: ten days of ordinary events and a swarm when it is made, and a new event now and
/// then as time goes by.
class DemoCatalogue
{
public:
    enum class Pace {
        quiet, ///< an ordinary event every few minutes
        swarm ///< an event of the swarm every few seconds
    };

    DemoCatalogue(quint32 seed, Pace pace, Instant now);

    /// Adds the events up to `now`. True when there was one.
    bool advance(Instant now);

    /// The page of the last ten days, newest first, as it stood at the last advance().
    QByteArray page() const;

    /// Newest first.
    const QList<ParsedEarthquake> &events() const { return m_events; }

private:
    Instant nextAfter(Instant date);

    PageGenerator m_generator;
    Pace m_pace;
    QList<ParsedEarthquake> m_events;
    Instant m_next;
};
