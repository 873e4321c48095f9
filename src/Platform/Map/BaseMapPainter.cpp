// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/BaseMapPainter.h"

#include "Platform/Map/MapLabels.h"
#include "Platform/Map/MapSheet.h"

#include <QPainter>

#include <cmath>

namespace {
class LandAndSea
{
public:
    LandAndSea(const BaseMapData &data, const MapSheet &sheet, const BaseMapStyle &style)
        : m_data(data)
        , m_sheet(sheet)
        , m_style(style)
        , m_islands(visibleAreas(data.islands, sheet))
        , m_contextLand(visibleAreas(data.contextLand, sheet))
    {
    }

    const std::vector<SheetArea> &islands() const { return m_islands; }
    const std::vector<SheetArea> &contextLand() const { return m_contextLand; }

    void paintSea(QPainter &painter, double degreesAcross) const
    {
        painter.fillRect(m_sheet.rect(), m_style.seaTone(0, m_sheet.scale));
        paintBands(painter);
        paintGraticule(painter, graticuleStep(degreesAcross));
        paintGlow(painter);
    }

    /// On a transparent layer of its own: what is painted on top of the land then stays on the land.
    void paintLand(QPainter &painter) const
    {
        painter.setPen(Qt::NoPen);
        fill(painter, m_contextLand, m_style.contextLand);
        fill(painter, m_islands, m_style.islandLand);
        painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
        paintShade(painter);
        paintMunicipalBorders(painter);
        paintCountryBorders(painter);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        stroke(painter, m_contextLand, QPen(m_style.contextCoast, 0.8));
        stroke(painter, m_islands, QPen(m_style.islandCoast, grownWithScale(m_sheet.scale, 63, 2500, 0.8, 1.3)));
    }

private:
    static void fill(QPainter &painter, const std::vector<SheetArea> &areas, const QColor &color)
    {
        for (const SheetArea &area : areas)
            painter.fillPath(area.fill, color);
    }

    static void stroke(QPainter &painter, const std::vector<SheetArea> &areas, QPen pen)
    {
        pen.setJoinStyle(Qt::RoundJoin);
        painter.setPen(pen);
        for (const SheetArea &area : areas)
            for (const QList<QPointF> &piece : area.outline)
                painter.drawPolyline(piece.constData(), int(piece.size()));
    }

    /// Broad and faint: bevelled joins cost a third of round ones and, unlike mitred ones, throw no spikes.
    void strokeShore(QPainter &painter, const QColor &color, double width) const
    {
        painter.setPen(QPen(color, width, Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin));
        for (const auto *areas : {&m_contextLand, &m_islands})
            for (const SheetArea &area : *areas)
                for (const QList<QPointF> &piece : area.coarseOutline)
                    painter.drawPolyline(piece.constData(), int(piece.size()));
    }

    void paintBands(QPainter &painter) const
    {
        const double edgeOpacity = grownWithScale(m_sheet.scale, 400, 850, 1, 0);
        const std::vector<SheetArea> bands = visibleAreas(m_data.bathymetry, m_sheet);
        for (const SheetArea &band : bands) {
            size_t number = 1;
            for (const MapArea &shallower : m_data.bathymetry)
                number += shallower.depthMeters < band.area->depthMeters ? 1 : 0;
            painter.fillPath(band.fill, m_style.seaTone(std::min<size_t>(number, 5), m_sheet.scale));
        }
        if (edgeOpacity > 0)
            stroke(painter, bands, QPen(faded(m_style.bandEdge, edgeOpacity), 0.7));
    }

    void paintGraticule(QPainter &painter, double step) const
    {
        painter.setPen(QPen(m_style.graticule, 0.8));
        const QRectF world = m_sheet.world();
        for (const double longitude : graticuleMeridians(world, step)) {
            const double x = m_sheet.toSheet(QPointF(longitude, 0)).x();
            painter.drawLine(QLineF(x, 0, x, m_sheet.size.height()));
        }
        for (const double latitude : graticuleParallels(world, step)) {
            const double y = m_sheet.toSheet(WebMercator::toWorld(Coordinate{latitude, 0})).y();
            painter.drawLine(QLineF(0, y, m_sheet.size.width(), y));
        }
    }

    void paintGlow(QPainter &painter) const
    {
        const double factor = shoreWidthFactor(m_sheet.scale);
        constexpr std::array<double, 3> widths = {26, 16, 8};
        painter.setRenderHint(QPainter::Antialiasing, false);
        for (size_t i = 0; i < widths.size(); ++i)
            strokeShore(painter, m_style.shoreGlow[i], widths[i] * factor);
        painter.setRenderHint(QPainter::Antialiasing, true);
    }

    void paintShade(QPainter &painter) const
    {
        const double factor = 1.3 * shoreWidthFactor(m_sheet.scale);
        for (const double width : {9.0, 5.0, 2.4})
            strokeShore(painter, m_style.innerShade, width * factor);
    }

    void paintMunicipalBorders(QPainter &painter) const
    {
        const double scale = m_sheet.scale;
        if (scale < 300)
            return;
        QPen pen(faded(m_style.municipalBorder, grownWithScale(scale, 300, 900, 0.25, 1)),
                 grownWithScale(scale, 300, 2500, 0.6, 1.0));
        pen.setCapStyle(Qt::FlatCap);
        pen.setDashPattern(scale < 700 ? QList<qreal>{3, 2} : QList<qreal>{5, 2.2, 1.2, 2.2});
        painter.setPen(pen);
        for (const MapLine &border : m_data.municipalBorders)
            drawLine(painter, border);
    }

    void paintCountryBorders(QPainter &painter) const
    {
        QPen pen(m_style.countryBorder, 0.9);
        pen.setCapStyle(Qt::FlatCap);
        for (const MapBorder &border : m_data.countryBorders) {
            pen.setDashPattern(border.isDisputed ? QList<qreal>{2, 4} : QList<qreal>{7, 3, 1.5, 3});
            painter.setPen(pen);
            drawLine(painter, border.line);
        }
    }

    void drawLine(QPainter &painter, const MapLine &line) const
    {
        if (!m_sheet.toSheet(line.bounds).adjusted(-1, -1, 1, 1).intersects(m_sheet.frame()))
            return;
        for (const QList<QPointF> &piece : MapGeometry::clippedLine(m_sheet.toSheet(line.points), m_sheet.frame()))
            painter.drawPolyline(piece.constData(), int(piece.size()));
    }

    const BaseMapData &m_data;
    const MapSheet &m_sheet;
    const BaseMapStyle &m_style;
    std::vector<SheetArea> m_islands;
    std::vector<SheetArea> m_contextLand;
};

QImage blankImage(const MapSheet &sheet, double devicePixelRatio, QImage::Format format)
{
    QImage image((sheet.size * devicePixelRatio).toSize(), format);
    image.setDevicePixelRatio(devicePixelRatio);
    return image;
}
}

BaseMapPicture paintBaseMap(const BaseMapData &data, const BaseMapRequest &request)
{
    const double ratio = request.devicePixelRatio;
    const double margin = std::ceil(request.margin * ratio) / ratio;
    const QSizeF windowPixels = request.camera.size() * ratio;
    const QSizeF window = QSizeF(std::ceil(windowPixels.width()), std::ceil(windowPixels.height())) / ratio;
    MapSheet sheet;
    sheet.scale = request.camera.scale();
    sheet.size = window + QSizeF(2 * margin, 2 * margin);
    sheet.origin = request.camera.toWorld({-margin, -margin});
    const BaseMapStyle &style = BaseMapStyle::of(request.appearance);
    const LandAndSea landAndSea(data, sheet, style);

    QImage image = blankImage(sheet, ratio, QImage::Format_RGB32);
    QImage land = blankImage(sheet, ratio, QImage::Format_ARGB32_Premultiplied);
    land.fill(Qt::transparent);
    QPainter landPainter(&land);
    landPainter.setRenderHint(QPainter::Antialiasing);
    landAndSea.paintLand(landPainter);
    landPainter.end();
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    landAndSea.paintSea(painter, request.camera.visibleWorld().width());
    painter.drawImage(QPointF(), land);

    MapLabels labels(sheet, style, landAndSea.islands(), landAndSea.contextLand());
    labels.reserveGraticuleFigures(request.camera);
    labels.reserveCovers(request.camera, request.covers);
    if (request.annotations)
        labels.avoid(*request.annotations);
    labels.place(data.places);
    if (request.annotations)
        labels.placeTitles(request.annotations->titles);
    labels.paint(painter);
    painter.end();
    return {image, sheet.world(), sheet.scale};
}
