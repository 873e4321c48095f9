// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/BaseMapItem.h"
#include "Support/World.h"

#include <QQuickWindow>
#include <QTest>

using namespace std::chrono_literals;

namespace {
/// A marker with a title in the middle of whatever the camera shows.
class TitledCentre : public MapAnnotationSource
{
public:
    std::shared_ptr<const MapAnnotations> annotations(const MapCamera &camera) const override
    {
        auto result = std::make_shared<MapAnnotations>();
        result->positions = {camera.center()};
        result->radius = 15;
        result->titles = {{camera.center(), QStringLiteral("SW EL PINAR")}};
        return result;
    }
};
}

/// All that leaves the main thread is the painting of the base map. Built with the thread sanitizer, which ends the
/// program with an error when both threads touch the same memory unordered.
class MapThreadsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void paintingSharesNothingWithTheMainThread()
    {
        World world;
        MapController controller;
        controller.setRegion({{28.3, -15.8}, {8.0, 10.0}});
        controller.setSize({400, 300});
        TitledCentre centre;
        QQuickWindow window;
        window.resize(400, 300);
        BaseMapItem map(window.contentItem());
        map.setSize({400, 300});
        map.setController(&controller);
        map.setAnnotations(&centre);
        window.show();
        const auto isSharpInTime = [&] {
            world.clock.advance(80ms);
            return map.isSharp();
        };
        QTRY_VERIFY(isSharpInTime());
        for (int picture = 0; picture < 5; ++picture) {
            controller.zoomInAt(50, 50);
            Q_EMIT centre.annotationsChanged();
            world.clock.advance(80ms);
            QVERIFY(!map.isSharp());
            // The painter has begun: what it was handed changes under it.
            controller.grab();
            controller.drag(2, 1);
            controller.release();
            map.setDark(!map.isDark());
            QTRY_VERIFY(isSharpInTime());
        }
    }
};

QTEST_MAIN(MapThreadsTest)
#include "MapThreadsTest.moc"
