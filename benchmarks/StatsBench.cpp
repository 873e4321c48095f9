// SPDX-License-Identifier: GPL-3.0-or-later
#include "Budgets.h"

#include "Core/ViewModels/StatsViewModel.h"
#include "Support/World.h"

#include <cstdlib>
#include <vector>

namespace {
constexpr int events = 1'000'000;
constexpr int placeNames = 3000;

/// Half of them scattered over the islands, half in one swarm, as a store of years holds them; newest first.
std::vector<Earthquake> stored(Instant now)
{
    std::vector<Earthquake> earthquakes;
    earthquakes.reserve(events);
    for (int i = 0; i < events; ++i) {
        const bool isSwarm = i / 1000 % 2 == 0;
        earthquakes.emplace_back(QStringLiteral("es%1").arg(i), now - std::chrono::minutes(i),
                                 isSwarm ? 28.55 : 27.5 + i % 200 * 0.01, isSwarm ? -17.85 : -18.5 + i % 500 * 0.01,
                                 i % 80 * 1.0, i % 50 * 0.1, QStringLiteral("mbLg"), std::nullopt,
                                 QStringLiteral("SW VILLA DE PUEBLO %1").arg(isSwarm ? i % 7 : i % placeNames), now);
    }
    return earthquakes;
}
}

void statsBudgets(Budgets &budgets)
{
    World world;
    const std::vector<Earthquake> earthquakes = stored(world.clock.now());
    std::vector<double> magnitudes;
    std::vector<double> depths;
    for (const Earthquake &earthquake : earthquakes) {
        magnitudes.push_back(earthquake.magnitude());
        depths.push_back(earthquake.depth());
    }
    StatsViewModel model;
    volatile double sink = 0;
    budgets.atMost(
        40, "statistics of 1,000,000 events", [&] { model.update(earthquakes); },
        [&] {
            double magnitudeSum = 0;
            double depthSum = 0;
            for (size_t i = 0; i < magnitudes.size(); ++i) {
                magnitudeSum += magnitudes[i];
                depthSum += depths[i];
            }
            sink = magnitudeSum + depthSum;
        });
}
