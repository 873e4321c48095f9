// SPDX-License-Identifier: GPL-3.0-or-later
#include "DemoCatalogue.h"

namespace {
using namespace std::chrono_literals;

constexpr int ordinaryEvents = 60;
constexpr int swarmEvents = 90;
constexpr auto swarmLength = 30h;
constexpr auto daysListed = std::chrono::days(10);
}

DemoCatalogue::DemoCatalogue(quint32 seed, Pace pace, Instant now)
    : m_generator(seed)
    , m_pace(pace)
    , m_events(m_generator.ordinary(ordinaryEvents, now) + m_generator.swarm(swarmEvents, now, swarmLength))
    , m_next(nextAfter(now))
{
    PageGenerator::sortNewestFirst(m_events);
}

bool DemoCatalogue::advance(Instant now)
{
    const qsizetype before = m_events.size();
    for (; m_next <= now; m_next = nextAfter(m_next))
        m_events.prepend(m_pace == Pace::swarm ? m_generator.swarmEvent(m_next) : m_generator.ordinaryEvent(m_next));
    const bool hasNew = m_events.size() > before;
    while (!m_events.isEmpty() && m_events.constLast().date < now - daysListed)
        m_events.removeLast();
    return hasNew;
}

QByteArray DemoCatalogue::page() const
{
    return PageGenerator::page(m_events);
}

Instant DemoCatalogue::nextAfter(Instant date)
{
    return m_pace == Pace::swarm ? date + m_generator.pause(2s, 15s) : date + m_generator.pause(90s, 300s);
}
