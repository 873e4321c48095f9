// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Map/BaseMapPainter.h"
#include "Platform/Map/MapAnnotationSource.h"
#include "Platform/Map/MapController.h"

#include <QPointer>
#include <QQmlListProperty>

/// The base map under a camera. It is painted on another thread into a picture somewhat larger than the item; while the
/// camera moves, the last picture moves and stretches with it, and a sharp one takes its place when the camera has
/// rested for a moment.
class BaseMapItem : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(MapController *controller READ controller WRITE setController NOTIFY controllerChanged REQUIRED)
    Q_PROPERTY(bool isDark READ isDark WRITE setDark NOTIFY isDarkChanged)
    /// Whose titles are painted; null for none.
    Q_PROPERTY(MapAnnotationSource *annotations READ annotations WRITE setAnnotations NOTIFY annotationsChanged)
    /// Items that lie over the map, and no label under them. Where they are is asked at each painting.
    Q_PROPERTY(QQmlListProperty<QQuickItem> covers READ covers)
    /// The picture on screen is the one that the camera, the scheme and the annotations ask for.
    Q_PROPERTY(bool isSharp READ isSharp NOTIFY isSharpChanged)

public:
    explicit BaseMapItem(QQuickItem *parent = nullptr);

    MapController *controller() const { return m_controller; }
    bool isDark() const { return m_isDark; }
    MapAnnotationSource *annotations() const { return m_annotations; }
    bool isSharp() const { return m_isSharp; }
    QQmlListProperty<QQuickItem> covers() { return {this, &m_covers}; }
    void setController(MapController *controller);
    void setDark(bool isDark);
    void setAnnotations(MapAnnotationSource *annotations);

Q_SIGNALS:
    void controllerChanged();
    void isDarkChanged();
    void annotationsChanged();
    void isSharpChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;
    void componentComplete() override;

private:
    void cameraMoved();
    void pictureIsOutdated();
    void paintOnceRested();
    void paint();
    void take(const BaseMapPicture &picture, quint64 wanted);
    void setSharp(bool isSharp);
    QRectF pictureRect() const;

    QPointer<MapController> m_controller;
    QPointer<MapAnnotationSource> m_annotations;
    QList<QQuickItem *> m_covers;
    bool m_isDark = false;
    bool m_isSharp = false;

    BaseMapPicture m_picture;
    bool m_isNewPicture = false;
    /// Counts what has changed since the beginning.
    quint64 m_wanted = 0;
    /// That count when the present wait for rest began.
    quint64 m_restingSince = 0;
    bool m_isPainting = false;
    bool m_isWaitingForRest = false;
};
