// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Stats/StatsScreen.h"

#include "Core/Persistence/EarthquakeQuery.h"
#include "Platform/Text/NumberFormat.h"

namespace {
PeakFigure figure(const std::optional<PeakEvent> &peak)
{
    if (!peak)
        return {};
    return {true, peak->earthquake.magnitude(), peak->earthquake.location()};
}
}

StatsScreen::StatsScreen(QObject *parent)
    : QObject(parent)
{
}

void StatsScreen::componentComplete()
{
    connect(&m_container->earthquakes(), &EarthquakeQuery::changed, this, &StatsScreen::update);
}

bool StatsScreen::isEmpty() const
{
    return !m_container || m_container->earthquakes().isEmpty();
}

PeakFigure StatsScreen::peakLast24h() const
{
    return figure(m_viewModel.peakLast24h());
}

PeakFigure StatsScreen::peakLast7d() const
{
    return figure(m_viewModel.peakLast7d());
}

QString StatsScreen::averageDepth() const
{
    return fixedText(depth().averageDepth, 1);
}

DepthFigure StatsScreen::shallow() const
{
    return {int(depth().shallowCount), depth().shallowFraction()};
}

DepthFigure StatsScreen::intermediate() const
{
    return {int(depth().intermediateCount), depth().intermediateFraction()};
}

DepthFigure StatsScreen::deep() const
{
    return {int(depth().deepCount), depth().deepFraction()};
}

void StatsScreen::appear()
{
    update();
}

void StatsScreen::update()
{
    m_viewModel.update(m_container->earthquakes().earthquakes());
    m_magnitudes.setStats(m_viewModel.magnitudeStats());
    m_clusters.setClusters(m_viewModel.topClusters());
    Q_EMIT redrawn();
}
