// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/BaseMapPainter.h"
#include "Support/Table.h"

#include <QTest>

#include <cmath>

namespace {
const BaseMapData &data()
{
    static const std::shared_ptr<const BaseMapData> loaded = BaseMapData::load();
    return *loaded;
}

BaseMapRequest request(const CoordinateRegion &region, const QSizeF &window = {1100, 720})
{
    BaseMapRequest result;
    result.camera = MapCamera(MapLimits{{{29.25, -15}, {28.5, 42}}, 40, 0.02});
    result.camera.resize(window);
    result.camera.fit(region);
    return result;
}

constexpr CoordinateRegion islands{{28.3, -15.8}, {8.0, 10.0}};
constexpr CoordinateRegion openSea{{28.9, -16.4}, {0.2, 0.2}};

QColor colorAt(const BaseMapPicture &picture, const Coordinate &coordinate)
{
    const QPointF way = WebMercator::toWorld(coordinate) - picture.world.topLeft();
    return picture.image.pixelColor((way * picture.scale * picture.image.devicePixelRatio()).toPoint());
}

bool isLike(const QColor &a, QRgb b)
{
    const QColor other(b);
    return std::abs(a.red() - other.red()) <= 3 && std::abs(a.green() - other.green()) <= 3
        && std::abs(a.blue() - other.blue()) <= 3;
}

/// How many pixels of a rectangle differ between two pictures of the same place.
int differences(const QImage &a, const QImage &b, const QRect &rect)
{
    int count = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y)
        for (int x = rect.left(); x <= rect.right(); ++x)
            count += a.pixel(x, y) == b.pixel(x, y) ? 0 : 1;
    return count;
}
}

class BaseMapTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyPlaceIsLoaded()
    {
        QCOMPARE(data().places.size(), size_t(185 + 88));
        QCOMPARE(data().places.back().kind, MapPlace::Kind::municipality);
    }

    void brokenLayersGiveNothing()
    {
        for (const char *layer : {"", R"({"type":"FeatureCollection"})",
                                  R"({"features":[{"geometry":{"type":"Point","coordinates":[1,2]}}]})"})
            QVERIFY2(mapAreas(layer).empty(), layer);
    }

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
        BaseMapRequest wanted = request(islands);
        wanted.appearance = isDark ? MapAppearance::dark : MapAppearance::light;
        const QColor found = colorAt(paintBaseMap(data(), wanted), place);
        QVERIFY2(isLike(found, color), qPrintable(found.name()));
    }

    /// The margin only adds: the window's part of the picture is painted as it is without one, labels apart.
    void thePictureReachesBeyondTheWindow()
    {
        BaseMapRequest wanted = request(islands, {640, 480});
        wanted.devicePixelRatio = 2;
        wanted.margin = 100;
        const BaseMapPicture picture = paintBaseMap(data(), wanted);
        QCOMPARE(picture.image.size(), QSize(1680, 1360));
        QCOMPARE(picture.image.devicePixelRatio(), 2.0);
        const QRectF window = wanted.camera.visibleWorld();
        const double margin = 100 / wanted.camera.scale();
        QVERIFY(std::abs(picture.world.left() - (window.left() - margin)) < 1e-9);
        QVERIFY(std::abs(picture.world.bottom() - (window.bottom() + margin)) < 1e-9);
        QVERIFY(isLike(colorAt(picture, {27.95, -15.6}), 0xF5EDD9));
    }

    void closeByTheBandsOfTheSeaDrawTogether()
    {
        const BaseMapStyle &style = BaseMapStyle::of(MapAppearance::light);
        QVERIFY(isLike(style.seaTone(0, 79), 0xD6E8F0));
        QVERIFY(isLike(style.seaTone(2, 5000), 0xB8D3E3));
        // 30 % of the way from B8D3E3 to D6E8F0 is left.
        QVERIFY(isLike(style.seaTone(0, 5000), 0xC1D9E7));
    }

    void atMostNineMeridiansShow_data()
    {
        const Table<double, double> row;
        row("nine degrees", 9.0, 1.0);
        row("a bit more", 9.01, 2.0);
        row("closest", 0.02, 0.005);
    }

    void atMostNineMeridiansShow()
    {
        const auto [degreesAcross, expected] = Table<double, double>::current();
        QCOMPARE(graticuleStep(degreesAcross), expected);
    }

    /// In the middle of the open sea there is nothing but a title, and that only while no other mark is in its way.
    void titlesStandUnderTheirMarkWhereTheyFit()
    {
        BaseMapRequest wanted = request(openSea, {600, 400});
        const QImage bare = paintBaseMap(data(), wanted).image;
        const QRect under(200, 217, 200, 16);
        auto annotations = std::make_shared<MapAnnotations>();
        annotations->radius = 14;
        annotations->positions = {wanted.camera.toWorld({300, 200})};
        annotations->titles = {{annotations->positions[0], QStringLiteral("NW TENERIFE")}};
        wanted.annotations = annotations;
        const QImage titled = paintBaseMap(data(), wanted).image;
        QVERIFY(differences(bare, titled, under) > 200);
        QCOMPARE(differences(bare, titled, QRect(200, 150, 200, 60)), 0);
        annotations->titles[0].drop = 20;
        QCOMPARE(differences(bare, paintBaseMap(data(), wanted).image, under), 0);
        annotations->titles[0].drop = 0;
        wanted.covers = {QRectF(300, 220, 5, 5)};
        QCOMPARE(differences(bare, paintBaseMap(data(), wanted).image, under), 0);
        wanted.covers.clear();
        annotations->positions.push_back(wanted.camera.toWorld({320, 226}));
        QCOMPARE(differences(bare, paintBaseMap(data(), wanted).image, under), 0);
    }

    void aTitleIsOneLineOfLimitedWidth()
    {
        BaseMapRequest wanted = request(openSea, {600, 400});
        const QImage bare = paintBaseMap(data(), wanted).image;
        const auto titled = [&](const QString &text) {
            auto annotations = std::make_shared<MapAnnotations>();
            annotations->titles = {{wanted.camera.toWorld({300, 200}), text}};
            wanted.annotations = annotations;
            return paintBaseMap(data(), wanted).image;
        };
        QCOMPARE(titled(QStringLiteral("NW\n\u202ETENERIFE")), titled(QStringLiteral("NW TENERIFE")));
        const QImage wide = titled(QString(4000, u'N'));
        QVERIFY(differences(bare, wide, QRect(170, 203, 260, 14)) > 200);
        QCOMPARE(differences(bare, wide, QRect(0, 203, 155, 14)), 0);
    }

    /// However many find none, the last has its own if nothing is near it.
    void theFirstOfManyTitlesHasTheRoom()
    {
        BaseMapRequest wanted = request(openSea, {600, 400});
        const auto titled = [&](int crowd) {
            auto annotations = std::make_shared<MapAnnotations>();
            const auto add = [&](const QPointF &point) {
                annotations->titles.push_back({wanted.camera.toWorld(point), QStringLiteral("NW TENERIFE")});
            };
            add({300, 200});
            for (int i = 0; i < crowd; ++i)
                add({i % 2 == 0 ? 330.0 : 300.0, 200});
            add({300, 300});
            wanted.annotations = annotations;
            return paintBaseMap(data(), wanted).image;
        };
        QCOMPARE(titled(1000), titled(0));
    }
};

QTEST_MAIN(BaseMapTest)
#include "BaseMapTest.moc"
