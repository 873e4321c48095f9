// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/EarthquakeMarkerLayer.h"

#include "Platform/Map/MarkerThinning.h"
#include "Platform/Support/Follow.h"
#include "iOS/Shared/MarkerNode.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGRendererInterface>

#include <algorithm>

namespace {
/// A finger takes what is so near to its middle.
constexpr double fingerRadius = 22;
/// Disc of the selected marker as it shows.
constexpr double selectedRadius = MarkerLook::selectedDiameter / 2 * MarkerLook::selectedScale;

bool isSoftware(QQuickWindow *window)
{
    return window->rendererInterface()->graphicsApi() == QSGRendererInterface::Software;
}

bool isWithin(const QPointF &way, double radius)
{
    return QPointF::dotProduct(way, way) <= radius * radius;
}
}

EarthquakeMarkerLayer::EarthquakeMarkerLayer(QQuickItem *parent)
    : MapAnnotationSource(parent)
    , m_raised([this](const Earthquake &earthquake) { return place(earthquake); })
{
    setFlag(ItemHasContents);
    connect(&m_raised, &RaisedMarkers::changed, this, &QQuickItem::update);
}

EarthquakeMarkerLayer::~EarthquakeMarkerLayer() = default;

void EarthquakeMarkerLayer::setController(MapController *controller)
{
    if (!follow(m_controller, controller, this, &MapController::cameraChanged, &EarthquakeMarkerLayer::cameraMoved))
        return;
    cameraMoved();
    Q_EMIT controllerChanged();
}

void EarthquakeMarkerLayer::setMarkers(EarthquakeMarkerSet *markers)
{
    if (!follow(m_markers, markers, this, &EarthquakeMarkerSet::earthquakesChanged,
                &EarthquakeMarkerLayer::earthquakesChanged))
        return;
    if (m_markers)
        connect(m_markers, &EarthquakeMarkerSet::selectedChanged, this, &EarthquakeMarkerLayer::selectionChanged);
    earthquakesChanged();
    Q_EMIT markersChanged();
}

void EarthquakeMarkerLayer::setStyle(Style style)
{
    if (m_style == style)
        return;
    m_style = style;
    const QColor edge = m_look.edge;
    m_look = {};
    m_look.edge = edge;
    if (style == Style::dots) {
        m_look.kind = MarkerLook::Kind::dot;
        m_look.diameter = 14;
    }
    lookChanged();
    Q_EMIT styleChanged();
}

void EarthquakeMarkerLayer::setEdge(const QColor &edge)
{
    if (m_look.edge == edge)
        return;
    m_look.edge = edge;
    lookChanged();
    Q_EMIT edgeChanged();
}

std::optional<Earthquake> EarthquakeMarkerLayer::earthquakeAt(const QPointF &point, bool byFinger) const
{
    if (!m_markers || !m_controller)
        return std::nullopt;
    const double reach = byFinger ? fingerRadius : radius();
    const auto &selected = m_markers->selected();
    if (selected && indexOf(*selected) && isWithin(place(*selected) - point, std::max(reach, selectedRadius)))
        return selected;
    const MapCamera &camera = m_controller->camera();
    const auto mark = m_index.topmostAt(camera.toWorld(point + QPointF(0, lift())), reach / camera.scale());
    return mark ? std::optional(m_markers->earthquakes()[size_t(*mark)]) : std::nullopt;
}

std::optional<qsizetype> EarthquakeMarkerLayer::indexOf(const Earthquake &earthquake) const
{
    if (!m_markers)
        return std::nullopt;
    const auto &all = m_markers->earthquakes();
    auto found = std::lower_bound(all.begin(), all.end(), earthquake.date(),
                                  [](const Earthquake &e, Instant date) { return e.date() > date; });
    for (; found != all.end() && found->date() == earthquake.date(); ++found)
        if (*found == earthquake)
            return found - all.begin();
    return std::nullopt;
}

std::optional<Earthquake> EarthquakeMarkerLayer::nearest(const Earthquake &from, MarkerIndex::Direction direction) const
{
    const auto index = indexOf(from);
    const auto next = index ? m_index.nearest(*index, direction) : std::nullopt;
    return next ? std::optional(m_markers->earthquakes()[size_t(*next)]) : std::nullopt;
}

std::optional<Earthquake> EarthquakeMarkerLayer::nearestTo(const QPointF &point) const
{
    if (!m_controller)
        return std::nullopt;
    const auto next = m_index.nearestTo(m_controller->camera().toWorld(point));
    return next ? std::optional(m_markers->earthquakes()[size_t(*next)]) : std::nullopt;
}

QPointF EarthquakeMarkerLayer::place(const Earthquake &earthquake) const
{
    if (!m_controller)
        return {};
    return m_controller->camera().toScreen(WebMercator::toWorld(earthquake.coordinate())) - QPointF(0, lift());
}

std::shared_ptr<const MapAnnotations> EarthquakeMarkerLayer::annotations(const MapCamera &camera) const
{
    const std::optional<Earthquake> standing = standingAmongDots();
    if (!m_markers || (m_index.positions().empty() && !standing))
        return nullptr;
    auto result = std::make_shared<MapAnnotations>();
    result->radius = radius();
    result->lift = lift();
    const QRectF seen = camera.visibleWorld();
    const QRectF reach = seen.adjusted(-seen.width() / 2, -seen.height() / 2, seen.width() / 2, seen.height() / 2);
    const int level = MarkerThinning::levelOf(camera.scale());
    const std::optional<qsizetype> enlarged = enlargedBadge();
    for (size_t mark = 0; mark < m_index.positions().size(); ++mark) {
        const QPointF &position = m_index.positions()[mark];
        if (m_levels[mark] > level || !reach.contains(position))
            continue;
        result->positions.push_back(position);
        const double drop = enlarged == qsizetype(mark) ? MarkerLook::selectedReach - radius() : 0;
        result->titles.push_back({position, m_markers->earthquakes()[mark].location(), drop});
    }
    if (standing) {
        const QPointF position = WebMercator::toWorld(standing->coordinate());
        // Its item is taller than a dot: two dots, one above the other, hold the room of it.
        const QPointF above =
            camera.toWorld(camera.toScreen(position) - QPointF(0, standingHeight() - m_look.diameter));
        result->positions.insert(result->positions.end(), {position, above});
        result->titles.insert(result->titles.begin(), {position, standing->location(), 0});
    }
    return result;
}

QSGNode *EarthquakeMarkerLayer::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    if (!m_controller || m_index.positions().empty()) {
        delete node;
        return nullptr;
    }
    return isSoftware(window()) ? updatePainting(node) : updateQuads(node);
}

void EarthquakeMarkerLayer::itemChange(ItemChange change, const ItemChangeData &value)
{
    if (change == ItemDevicePixelRatioHasChanged) {
        m_isAtlasOutdated = true;
        update();
    }
    QQuickItem::itemChange(change, value);
}

void EarthquakeMarkerLayer::earthquakesChanged()
{
    buildMarkers();
    m_raised.keepOnly([this](const Earthquake &earthquake) { return indexOf(earthquake).has_value(); });
    selectionChanged();
}

void EarthquakeMarkerLayer::selectionChanged()
{
    if (m_markers && m_style == Style::badges) {
        const auto &selected = m_markers->selected();
        m_raised.update(m_markers->latest(), selected && indexOf(*selected) ? selected : std::nullopt);
    }
    Q_EMIT annotationsChanged();
}

std::optional<qsizetype> EarthquakeMarkerLayer::enlargedBadge() const
{
    return m_style == Style::badges && m_markers->selected() ? indexOf(*m_markers->selected()) : std::nullopt;
}

std::optional<Earthquake> EarthquakeMarkerLayer::standingAmongDots() const
{
    return m_markers && m_style == Style::dots ? m_markers->selected() : std::nullopt;
}

void EarthquakeMarkerLayer::cameraMoved()
{
    m_raised.movedAll();
    update();
}

void EarthquakeMarkerLayer::lookChanged()
{
    buildMarkers();
    Q_EMIT annotationsChanged();
}

void EarthquakeMarkerLayer::buildMarkers()
{
    std::vector<QPointF> positions;
    m_cells.clear();
    MarkerAtlas atlas(m_look);
    if (m_markers) {
        positions.reserve(m_markers->earthquakes().size());
        m_cells.reserve(m_markers->earthquakes().size());
        for (const Earthquake &earthquake : m_markers->earthquakes()) {
            positions.push_back(WebMercator::toWorld(earthquake.coordinate()));
            m_cells.push_back(quint16(atlas.cellOf(earthquake.magnitude())));
        }
    }
    m_atlas = std::move(atlas);
    m_levels = MarkerThinning::levels(positions, m_look.diameter);
    m_index = MarkerIndex(std::move(positions));
    m_isGeometryOutdated = true;
    m_isAtlasOutdated = true;
    update();
}

QSGNode *EarthquakeMarkerLayer::updateQuads(QSGNode *node)
{
    auto *markers = static_cast<MarkerNode *>(node);
    if (!markers) {
        // The first one, or one in place of those that went when the window was hidden.
        markers = new MarkerNode;
        m_isAtlasOutdated = true;
        m_isGeometryOutdated = true;
    }
    if (m_isAtlasOutdated) {
        const double ratio = window()->effectiveDevicePixelRatio();
        markers->setAtlas(window()->createTextureFromImage(m_atlas.image(ratio), QQuickWindow::TextureHasAlphaChannel),
                          m_atlas.rows(), m_atlas.cellPixels(ratio), lift() * ratio);
        m_isAtlasOutdated = false;
    }
    if (m_isGeometryOutdated) {
        m_uploadedBytes += markers->setMarkers(m_index.positions(), m_levels, m_cells);
        m_isGeometryOutdated = false;
    }
    std::vector<qsizetype> hidden;
    for (const Earthquake &raised : m_raised.earthquakes())
        if (const auto index = indexOf(raised))
            hidden.push_back(*index);
    markers->setHidden(hidden);
    markers->setCamera(m_controller->camera());
    return markers;
}

QSGNode *EarthquakeMarkerLayer::updatePainting(QSGNode *node)
{
    auto *image = static_cast<QSGImageNode *>(node);
    if (!image) {
        image = window()->createImageNode();
        image->setOwnsTexture(true);
    }
    image->setTexture(window()->createTextureFromImage(painting()));
    image->setRect(boundingRect());
    return image;
}

QImage EarthquakeMarkerLayer::painting() const
{
    const double ratio = window()->effectiveDevicePixelRatio();
    const QImage cells = m_atlas.image(ratio);
    const int side = m_atlas.cellPixels(ratio);
    const MapCamera &camera = m_controller->camera();
    const int level = MarkerThinning::levelOf(camera.scale());
    const QRectF frame = boundingRect().adjusted(-side, -side, side, side);
    QImage image((size() * ratio).toSize().expandedTo({1, 1}), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    for (size_t mark = m_index.positions().size(); mark-- > 0;) {
        const QPointF place = camera.toScreen(m_index.positions()[mark]) - QPointF(0, lift());
        if (m_levels[mark] > level || !frame.contains(place))
            continue;
        const Earthquake &earthquake = m_markers->earthquakes()[mark];
        const auto &raised = m_raised.earthquakes();
        if (std::find(raised.begin(), raised.end(), earthquake) != raised.end())
            continue;
        const int cell = m_cells[mark];
        const QPoint corner = (place * ratio - QPointF(side, side) / 2).toPoint();
        painter.drawImage(corner, cells,
                          QRect(cell % MarkerAtlas::columns * side, cell / MarkerAtlas::columns * side, side, side));
    }
    return image;
}
