// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Map/MapCamera.h"
#include "Platform/Support/Instant.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

/// The camera of one map on screen and the hand that moves it. It starts on `region` and shows that whole region at
/// every size of the window until the user moves the map; from then on nothing but the user moves it.
class MapController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(CoordinateRegion region READ region WRITE setRegion NOTIFY regionChanged)
    Q_PROPERTY(QSizeF size READ size WRITE setSize NOTIFY cameraChanged)
    /// Pixels at the window's upper edge that something lies over.
    Q_PROPERTY(double topCover READ topCover WRITE setTopCover NOTIFY regionChanged)
    /// Zooms in one step and lets nothing run on.
    Q_PROPERTY(bool isStill READ isStill WRITE setStill NOTIFY isStillChanged)
    /// The map moves by itself: advance() wants to be called at every frame.
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY isRunningChanged)
    Q_PROPERTY(bool canZoomIn READ canZoomIn NOTIFY cameraChanged)
    Q_PROPERTY(bool canZoomOut READ canZoomOut NOTIFY cameraChanged)
    /// Of the bar that stands for `scaleBarText`, in pixels.
    Q_PROPERTY(double scaleBarWidth READ scaleBarWidth NOTIFY cameraChanged)
    /// What that width never exceeds, in pixels.
    Q_PROPERTY(double widestScaleBar MEMBER widestScaleBar CONSTANT)
    Q_PROPERTY(QString scaleBarText READ scaleBarText NOTIFY cameraChanged)

public:
    explicit MapController(QObject *parent = nullptr);

    const MapCamera &camera() const { return m_camera; }
    CoordinateRegion region() const { return m_region; }
    QSizeF size() const { return m_camera.size(); }
    double topCover() const { return m_topCover; }
    bool isStill() const { return m_isStill; }
    bool isRunning() const { return m_isRunning; }
    bool canZoomIn() const { return m_camera.scale() < m_camera.largestScale(); }
    bool canZoomOut() const { return m_camera.scale() > m_camera.smallestScale(); }
    static constexpr double widestScaleBar = 150;
    double scaleBarWidth() const;
    QString scaleBarText() const;

    void setRegion(const CoordinateRegion &region);
    void setSize(const QSizeF &size);
    void setTopCover(double pixels);
    void setStill(bool isStill);

    /// A drag begins, moves by pixels, ends. What was moving fast at the end runs out gently.
    Q_INVOKABLE void grab();
    Q_INVOKABLE void drag(double dx, double dy);
    Q_INVOKABLE void release();
    /// A pinch whose fingers are now `factor` times as far apart as at its beginning, grab().
    Q_INVOKABLE void pinch(double factor, double x, double y);
    /// A wheel turned by eighths of a degree about the pointer.
    Q_INVOKABLE void turnWheel(double angle, double x, double y);
    /// Doubles the scale about a point.
    Q_INVOKABLE void zoomInAt(double x, double y);
    Q_INVOKABLE void zoomIn();
    Q_INVOKABLE void zoomOut();
    Q_INVOKABLE void showRegion();
    /// Plus, minus, 0 and the arrows. False for every other key, and for these with a modifier.
    Q_INVOKABLE bool pressKey(int key, int modifiers);
    /// Moves what runs on by so many seconds.
    Q_INVOKABLE void advance(double seconds);
    /// Moves the map just so far that a place is at least `margin` pixels inside the free part of the window.
    void reveal(const QPointF &world, const QMarginsF &covered, double margin);

Q_SIGNALS:
    void regionChanged();
    void cameraChanged();
    void isStillChanged();
    void isRunningChanged();

private:
    void fitRegion();
    void zoomSmoothly(double factor, const QPointF &anchor);
    void setRunning(bool isRunning);
    struct ScaleBar
    {
        double meters;
        double pixels;
    };
    ScaleBar scaleBar() const;

    MapCamera m_camera;
    CoordinateRegion m_region{{0, 0}, {1, 1}};
    double m_topCover = 0;
    bool m_isStill = false;
    bool m_isRunning = false;
    bool m_wasMovedByUser = false;

    /// Velocity of the drag in pixels a second, and when it was taken.
    QPointF m_velocity;
    Instant m_lastDrag;
    double m_pinched = 1;

    MapThrow m_throw;
    double m_thrownSeconds = 0;
    /// Logarithm of the factor that a zoom has still to go.
    double m_zoomLeft = 0;
    QPointF m_zoomAnchor;
};
