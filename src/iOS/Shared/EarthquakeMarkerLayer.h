// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Map/MapAnnotationSource.h"
#include "Platform/Map/MapController.h"
#include "Platform/Map/MarkerIndex.h"
#include "iOS/Shared/EarthquakeMarkerSet.h"
#include "iOS/Shared/MarkerAtlas.h"
#include "iOS/Shared/RaisedMarkers.h"

#include <QPointer>

/// The markers of all events of a set, above a map. They are one node of quads that is built when the set changes;
/// moving and zooming the map change its matrix alone. Markers that newer ones hide, or nearly so, are left out of the
/// drawing. The latest and the selected marker are not drawn here: they are `raised`, for items of their own.
class EarthquakeMarkerLayer : public MapAnnotationSource
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(MapController *controller READ controller WRITE setController NOTIFY controllerChanged REQUIRED)
    Q_PROPERTY(EarthquakeMarkerSet *markers READ markers WRITE setMarkers NOTIFY markersChanged)
    Q_PROPERTY(Style style READ style WRITE setStyle NOTIFY styleChanged)
    /// Line inside the edge of every disc.
    Q_PROPERTY(QColor edge READ edge WRITE setEdge NOTIFY edgeChanged)
    Q_PROPERTY(RaisedMarkers *raised READ raised CONSTANT)
    /// Pixels that the item of the selected event among dots reaches up.
    Q_PROPERTY(double standingHeight READ standingHeight CONSTANT)

public:
    enum class Style {
        badges, ///< discs of 28 pixels with the magnitude, centred on the event
        /// Translucent discs of 14 pixels that stand on the event. The selected event, which has an item of its own
        /// among them and need not be in the set, has room and title kept for it.
        dots
    };
    Q_ENUM(Style)

    explicit EarthquakeMarkerLayer(QQuickItem *parent = nullptr);
    ~EarthquakeMarkerLayer() override;

    MapController *controller() const { return m_controller; }
    EarthquakeMarkerSet *markers() const { return m_markers; }
    Style style() const { return m_style; }
    QColor edge() const { return m_look.edge; }
    RaisedMarkers *raised() { return &m_raised; }
    double standingHeight() const { return 24; }
    void setController(MapController *controller);
    void setMarkers(EarthquakeMarkerSet *markers);
    void setStyle(Style style);
    void setEdge(const QColor &edge);

    /// The uppermost event under a point of the layer; a finger reaches further than a pointer.
    std::optional<Earthquake> earthquakeAt(const QPointF &point, bool byFinger) const;
    /// The number of an event in the set, newest first.
    std::optional<qsizetype> indexOf(const Earthquake &earthquake) const;
    /// The next event in a direction of the screen.
    std::optional<Earthquake> nearest(const Earthquake &from, MarkerIndex::Direction direction) const;
    /// The event nearest to a point of the layer.
    std::optional<Earthquake> nearestTo(const QPointF &point) const;
    /// Where an event is in the layer.
    QPointF place(const Earthquake &earthquake) const;
    std::shared_ptr<const MapAnnotations> annotations(const MapCamera &camera) const override;

    /// Bytes of marker geometry written so far for the renderer to upload.
    qint64 uploadedBytes() const { return m_uploadedBytes; }

Q_SIGNALS:
    void controllerChanged();
    void markersChanged();
    void styleChanged();
    void edgeChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;

private:
    void earthquakesChanged();
    void selectionChanged();
    void cameraMoved();
    void lookChanged();
    std::optional<Earthquake> standingAmongDots() const;
    /// Number of the selected event in a set of badges.
    std::optional<qsizetype> enlargedBadge() const;
    void buildMarkers();
    QSGNode *updateQuads(QSGNode *node);
    QSGNode *updatePainting(QSGNode *node);
    QImage painting() const;
    /// Radius of the disc.
    double radius() const { return m_look.diameter / 2; }
    /// Pixels from an event up to the centre of its disc.
    double lift() const { return m_style == Style::dots ? radius() : 0; }

    QPointer<MapController> m_controller;
    QPointer<EarthquakeMarkerSet> m_markers;
    Style m_style = Style::badges;
    MarkerLook m_look;

    MarkerIndex m_index;
    /// For each event the level from which it shows.
    std::vector<quint8> m_levels;
    MarkerAtlas m_atlas;
    /// For each event its cell of the atlas.
    std::vector<quint16> m_cells;
    RaisedMarkers m_raised;
    bool m_isGeometryOutdated = true;
    bool m_isAtlasOutdated = true;
    qint64 m_uploadedBytes = 0;
};
