// SPDX-License-Identifier: GPL-3.0-or-later
#include "Budgets.h"

#include "Core/Models/Region.h"
#include "Platform/Map/BaseMapItem.h"
#include "Support/World.h"
#include "iOS/Shared/EarthquakeMarkerLayer.h"

#include <QEventLoop>
#include <QQuickWindow>
#include <QRandomGenerator>
#include <QSGRendererInterface>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {
constexpr QSize windowSize(1100, 720);
constexpr int framesInRun = 20;

/// Where the events lie.
enum class Spread {
    swarms, ///< in forty clusters of some kilometres, as the catalogue's do
    even ///< over the whole view, as bad as it gets
};

/// A map of 1100 by 720 under some events, whose frames are drawn as fast as they can.
class MeasuredMap
{
public:
    MeasuredMap(int count, Spread spread)
    {
        controller.setRegion(Region::canaryIslands().mapRegion());
        controller.setSize(windowSize);
        controller.setStill(true);
        base.setController(&controller);
        base.setSize(windowSize);
        base.setParentItem(window.contentItem());
        set.setEarthquakes(events(count, spread));
        layer.setController(&controller);
        layer.setMarkers(&set);
        base.setAnnotations(&layer);
        layer.setSize(windowSize);
        layer.setParentItem(window.contentItem());
        window.resize(windowSize);
        window.show();
        // The base map is painted once; the pictures that would follow a gesture are no part of a frame.
        QEventLoop loop;
        QTimer::singleShot(1000, &loop, &QEventLoop::quit);
        loop.exec();
        if (window.rendererInterface()->graphicsApi() == QSGRendererInterface::Software) {
            std::fputs("map: needs a renderer with shaders, such as xvfb-run gives\n", stderr);
            std::exit(2);
        }
    }

    ~MeasuredMap()
    {
        layer.setParentItem(nullptr);
        base.setParentItem(nullptr);
    }

    void pan()
    {
        for (int frame = 0; frame < framesInRun; ++frame) {
            controller.drag(frame % 2 == 0 ? 9 : -9, frame % 2 == 0 ? 4 : -4);
            draw();
        }
    }

    void zoom()
    {
        for (int frame = 0; frame < framesInRun; ++frame) {
            controller.turnWheel(frame < framesInRun / 2 ? 40 : -40, 500, 400);
            draw();
        }
    }

    std::vector<Earthquake> events(int count, Spread spread)
    {
        QRandomGenerator random(5);
        const auto around = [&](double middle, double width) {
            return middle + (random.generateDouble() - 0.5) * width;
        };
        std::vector<Coordinate> clusters;
        clusters.reserve(40);
        for (int i = 0; i < 40; ++i)
            clusters.push_back({around(28.2, 1.8), around(-16, 5)});
        std::vector<Earthquake> result;
        for (int i = 0; i < count; ++i) {
            const int number = random.bounded(40);
            const Coordinate &cluster = clusters[size_t(number)];
            const bool isEven = spread == Spread::even;
            result.emplace_back(QString::number(i), world.clock.now() - std::chrono::minutes(i),
                                isEven ? around(28.3, 8) : around(cluster.latitude, 0.3),
                                isEven ? around(-15.8, 13) : around(cluster.longitude, 0.3), 10,
                                random.generateDouble() * 4, QStringLiteral("mbLg"), std::nullopt,
                                QStringLiteral("NW PUEBLO NÚMERO %1.TF").arg(number));
        }
        return result;
    }

    /// The base map's painter after a gesture has come to rest here.
    double sharpen()
    {
        controller.drag(30, 20);
        return Budgets::milliseconds([this] {
            QEventLoop loop;
            const auto isSharp = QObject::connect(&base, &BaseMapItem::isSharpChanged, &loop, &QEventLoop::quit);
            world.clock.advance(std::chrono::seconds(1));
            loop.exec();
            QObject::disconnect(isSharp);
        });
    }

    World world;
    QQuickWindow window;
    MapController controller;
    EarthquakeMarkerSet set;
    BaseMapItem base;
    EarthquakeMarkerLayer layer;

private:
    void draw()
    {
        QEventLoop loop;
        const auto drawn = QObject::connect(&window, &QQuickWindow::frameSwapped, &loop, &QEventLoop::quit);
        window.update();
        loop.exec();
        QObject::disconnect(drawn);
    }
};
}

void mapBudgets(Budgets &budgets)
{
    const double panEmpty = [] {
        MeasuredMap map(0, Spread::swarms);
        map.pan();
        return Budgets::milliseconds([&] { map.pan(); }) / framesInRun;
    }();
    struct Case
    {
        int count;
        Spread spread;
        const char *pan;
        const char *zoom;
    };
    for (const Case &measured : {
             Case{2'000, Spread::swarms, "map: frame, panning, 2,000 in swarms : none", "zooming, 2,000 in swarms"},
             Case{10'000, Spread::swarms, "map: frame, panning, 10,000 in swarms : none", "zooming, 10,000 in swarms"},
             Case{100'000, Spread::swarms, "map: frame, panning, 100,000 in swarms : none",
                  "zooming, 100,000 in swarms"},
             Case{100'000, Spread::even, "map: frame, panning, 100,000 spread evenly : none",
                  "zooming, 100,000 evenly"},
         }) {
        MeasuredMap map(measured.count, measured.spread);
        map.pan();
        const qint64 before = map.layer.uploadedBytes();
        const double pan = Budgets::milliseconds([&] { map.pan(); }) / framesInRun;
        const double zoom = Budgets::milliseconds([&] { map.zoom(); }) / framesInRun;
        budgets.atMost(4, measured.pan, pan, panEmpty);
        budgets.atMost(4, (QByteArray("map: frame, ") + measured.zoom + " : none").constData(), zoom, panEmpty);
        budgets.countAtMost(0, "map: bytes of markers uploaded by it", double(map.layer.uploadedBytes() - before));
    }

    for (const auto &[spread, name] : {std::pair(Spread::swarms, "map: 100,000 in swarms laid out anew"),
                                       std::pair(Spread::even, "map: 100,000 evenly laid out anew")}) {
        MeasuredMap map(0, spread);
        const std::vector<Earthquake> events = map.events(100'000, spread);
        budgets.measured(name, Budgets::milliseconds([&] { map.set.setEarthquakes(events); }), "ms");
    }

    for (const auto &[spread, name] : {std::pair(Spread::swarms, "map: base map made sharp, 100,000 in swarms"),
                                       std::pair(Spread::even, "map: base map made sharp, 100,000 evenly")}) {
        MeasuredMap crowded(100'000, spread);
        crowded.sharpen();
        budgets.measured(name, crowded.sharpen(), "ms");
    }

    MeasuredMap map(2000, Spread::swarms);
    for (const char *const name : {"map: base map made sharp, archipelago", "map: base map made sharp, one island",
                                   "map: base map made sharp, one town"}) {
        map.sharpen();
        budgets.measured(name, map.sharpen(), "ms");
        for (int doubling = 0; doubling < 4; ++doubling)
            map.controller.zoomInAt(500, 350);
    }
}
