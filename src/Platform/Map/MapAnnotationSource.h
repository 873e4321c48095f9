// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Map/BaseMapPainter.h"

#include <QQuickItem>

/// An item that draws marks above a base map and tells it of them.
class MapAnnotationSource : public QQuickItem
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    using QQuickItem::QQuickItem;

    /// What shows to this camera, or might once it is moved a little; null for nothing.
    virtual std::shared_ptr<const MapAnnotations> annotations(const MapCamera &camera) const = 0;

Q_SIGNALS:
    void annotationsChanged();
};
