// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/BaseMapPainter.h"
#include "Support/Table.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace {
const BaseMapData &data()
{
    static const std::shared_ptr<const BaseMapData> loaded = BaseMapData::load();
    return *loaded;
}

BaseMapRequest request(const CoordinateRegion &region, const QSizeF &window)
{
    BaseMapRequest result;
    result.camera = MapCamera(MapLimits{{{29.25, -15}, {28.5, 42}}, 40, 0.02});
    result.camera.resize(window);
    result.camera.fit(region);
    return result;
}

constexpr CoordinateRegion islands{{28.3, -15.8}, {8.0, 10.0}};

/// Of a place in a picture, to a few steps of each colour.
bool isColour(const BaseMapPicture &picture, const Coordinate &place, QRgb expected)
{
    const QPointF way = WebMercator::toWorld(place) - picture.world.topLeft();
    const QColor found = picture.image.pixelColor((way * picture.scale * picture.image.devicePixelRatio()).toPoint());
    const QColor wanted(expected);
    return std::abs(found.red() - wanted.red()) <= 3 && std::abs(found.green() - wanted.green()) <= 3
        && std::abs(found.blue() - wanted.blue()) <= 3;
}

/// A window of 600 by 400 in the middle of the open sea, where there is nothing but what a test puts there.
class OpenSea
{
public:
    /// How many pixels of a rectangle differ from the bare sea.
    int drawn(const QRect &rect) const
    {
        const QImage seen = image();
        int count = 0;
        for (int y = rect.top(); y <= rect.bottom(); ++y)
            for (int x = rect.left(); x <= rect.right(); ++x)
                count += bare.pixel(x, y) == seen.pixel(x, y) ? 0 : 1;
        return count;
    }

    void addTitle(const QPointF &point, const QString &text)
    {
        annotations->titles.push_back({wanted.camera.toWorld(point), text});
        wanted.annotations = annotations;
    }

    QImage image() const { return paintBaseMap(data(), wanted).image; }

    BaseMapRequest wanted = request({{28.9, -16.4}, {0.2, 0.2}}, {600, 400});
    std::shared_ptr<MapAnnotations> annotations = std::make_shared<MapAnnotations>();

private:
    const QImage bare = image();
};
}

class BaseMapTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void landAndSeaHaveTheirColours_data()
    {
        const Table<bool, Coordinate, QRgb> row;
        row("island", false, {27.95, -15.6}, 0xF5EDD9U);
        row("Africa", false, {28.6, -9.8}, 0xEDE9DEU);
        row("deep sea", false, {30.7, -19.3}, 0x90B3CBU);
        row("deep sea, dark", true, {30.7, -19.3}, 0x0E1F2BU);
    }

    void landAndSeaHaveTheirColours()
    {
        const auto [isDark, place, color] = Table<bool, Coordinate, QRgb>::current();
        BaseMapRequest wanted = request(islands, {1100, 720});
        wanted.appearance = isDark ? MapAppearance::dark : MapAppearance::light;
        QVERIFY(isColour(paintBaseMap(data(), wanted), place, color));
    }

    /// The margin only adds: the window's part of the picture is painted as it is without one, labels apart.
    void thePictureReachesBeyondTheWindow()
    {
        BaseMapRequest wanted = request(islands, {640, 480});
        wanted.devicePixelRatio = 2;
        wanted.margin = 100;
        const BaseMapPicture picture = paintBaseMap(data(), wanted);
        QCOMPARE(picture.image.size(), QSize(1680, 1360));
        const QRectF window = wanted.camera.visibleWorld();
        const double margin = 100 / wanted.camera.scale();
        QVERIFY(std::abs(picture.world.left() - (window.left() - margin)) < 1e-9);
        QVERIFY(std::abs(picture.world.bottom() - (window.bottom() + margin)) < 1e-9);
        QVERIFY(isColour(picture, {27.95, -15.6}, 0xF5EDD9));
    }

    /// And that only while nothing else is in the way.
    void titlesStandUnderTheirMarkWhereTheyFit()
    {
        OpenSea sea;
        const QRect under(200, 217, 200, 16);
        sea.annotations->radius = 14;
        sea.annotations->positions = {sea.wanted.camera.toWorld({300, 200})};
        sea.addTitle({300, 200}, u"NW TENERIFE"_s);
        QVERIFY(sea.drawn(under) > 200);
        QCOMPARE(sea.drawn({200, 150, 200, 60}), 0);
        const QImage alone = sea.image();
        sea.addTitle({330, 200}, u"NW TENERIFE"_s);
        QVERIFY2(sea.image() == alone, "titles lie on one another");
        sea.annotations->titles.pop_back();
        sea.annotations->titles[0].drop = 20;
        QCOMPARE(sea.drawn(under), 0);
        sea.annotations->titles[0].drop = 0;
        sea.wanted.covers = {QRectF(300, 220, 5, 5)};
        QCOMPARE(sea.drawn(under), 0);
        sea.wanted.covers.clear();
        sea.annotations->positions.push_back(sea.wanted.camera.toWorld({320, 226}));
        QCOMPARE(sea.drawn(under), 0);
    }

    void aTitleIsOneLineOfLimitedWidth()
    {
        OpenSea hostile;
        hostile.addTitle({300, 200}, u"NW\n\u202ETENERIFE"_s);
        OpenSea plain;
        plain.addTitle({300, 200}, u"NW TENERIFE"_s);
        QCOMPARE(hostile.image(), plain.image());
        OpenSea wide;
        wide.addTitle({300, 200}, QString(4000, u'N'));
        QVERIFY(wide.drawn({170, 203, 260, 14}) > 200);
        QCOMPARE(wide.drawn({0, 203, 155, 14}), 0);
    }
};

QTEST_MAIN(BaseMapTest)
#include "BaseMapTest.moc"
