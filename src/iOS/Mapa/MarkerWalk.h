// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "iOS/Mapa/MapScreen.h"

/// From event to event on the map. Alt with an arrow goes to the next by nearness, Enter opens and closes the callout
/// of the one it stands on, Escape closes it. A tap goes to the event under it as well.
class MarkerWalk : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(MapScreen *screen MEMBER m_screen REQUIRED)
    Q_PROPERTY(EarthquakeMarkerLayer *layer MEMBER m_layer REQUIRED)
    /// Pixels of the map that something lies over, above and below.
    Q_PROPERTY(double topCover MEMBER m_topCover)
    Q_PROPERTY(double bottomCover MEMBER m_bottomCover)
    /// It stands on an event that is on the map.
    Q_PROPERTY(bool isOnMap READ isOnMap NOTIFY changed)
    /// In the layer.
    Q_PROPERTY(QPointF position READ position NOTIFY changed)
    /// Of the marker it stands on, ring included.
    Q_PROPERTY(double diameter READ diameter NOTIFY changed)
    /// Magnitude, place and time of the event, for a screen reader; empty where it stands on none.
    Q_PROPERTY(QString text READ text NOTIFY changed)

public:
    explicit MarkerWalk(QObject *parent = nullptr);

    void classBegin() override { }
    void componentComplete() override;

    bool isOnMap() const;
    QPointF position() const;
    double diameter() const;
    QString text() const;

    /// False for keys that mean nothing here.
    Q_INVOKABLE bool pressKey(int key, int modifiers);
    /// A tap on the layer. On a marker it selects the event, or ends its selection; elsewhere it does nothing.
    Q_INVOKABLE void tap(const QPointF &point, bool byFinger);

Q_SIGNALS:
    void changed();

private:
    bool go(MarkerIndex::Direction direction);
    bool openCallout();
    bool closeCallout();

    MapScreen *m_screen = nullptr;
    EarthquakeMarkerLayer *m_layer = nullptr;
    double m_topCover = 0;
    double m_bottomCover = 0;
    std::optional<Earthquake> m_current;
};
