// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/BaseMapItem.h"

#include "Platform/Clock/Clock.h"
#include "Platform/Support/Async.h"
#include "Platform/Support/Follow.h"
#include "Platform/Support/Platform.h"

#include <QCoreApplication>
#include <QPromise>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGRectangleNode>
#include <QThreadPool>

#include <cmath>

namespace {
/// A camera that stood still for so long rests.
constexpr auto restTime = std::chrono::milliseconds(80);
/// Beyond the window, as a part of its larger side.
constexpr double marginPart = 0.2;

/// Paints on a thread of the pool; the future ends on the main thread.
QFuture<BaseMapPicture> painted(const BaseMapRequest &request)
{
    auto promise = std::make_shared<QPromise<BaseMapPicture>>();
    promise->start();
    QFuture<BaseMapPicture> future = promise->future();
    QThreadPool::globalInstance()->start([promise, request] {
        static const std::shared_ptr<const BaseMapData> data = BaseMapData::load();
        const BaseMapPicture picture = paintBaseMap(*data, request);
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [promise, picture] {
                promise->addResult(picture);
                promise->finish();
            },
            Qt::QueuedConnection);
    });
    return future;
}

/// The sea behind the picture, and the picture.
class BaseMapNode : public QSGNode
{
public:
    explicit BaseMapNode(QQuickWindow *window)
        : m_sea(window->createRectangleNode())
        , m_image(window->createImageNode())
    {
        m_image->setOwnsTexture(true);
        m_image->setFiltering(QSGTexture::Linear);
        appendChildNode(m_sea);
    }

    ~BaseMapNode() override
    {
        if (!m_image->parent())
            delete m_image;
    }

    void setSea(const QRectF &rect, const QColor &color)
    {
        m_sea->setRect(rect);
        m_sea->setColor(color);
    }

    void setTexture(QSGTexture *texture)
    {
        m_image->setTexture(texture);
        if (!m_image->parent())
            appendChildNode(m_image);
    }

    void setPictureRect(const QRectF &rect)
    {
        if (m_image->parent())
            m_image->setRect(rect);
    }

private:
    QSGRectangleNode *m_sea;
    QSGImageNode *m_image;
};
}

BaseMapItem::BaseMapItem(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    setClip(true);
}

void BaseMapItem::setController(MapController *controller)
{
    if (!follow(m_controller, controller, this, &MapController::cameraChanged, &BaseMapItem::cameraMoved))
        return;
    pictureIsOutdated();
    Q_EMIT controllerChanged();
}

void BaseMapItem::setDark(bool isDark)
{
    if (m_isDark == isDark)
        return;
    m_isDark = isDark;
    pictureIsOutdated();
    Q_EMIT isDarkChanged();
}

void BaseMapItem::setAnnotations(MapAnnotationSource *annotations)
{
    if (!follow(m_annotations, annotations, this, &MapAnnotationSource::annotationsChanged,
                &BaseMapItem::pictureIsOutdated))
        return;
    pictureIsOutdated();
    Q_EMIT annotationsChanged();
}

QSGNode *BaseMapItem::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    auto *map = static_cast<BaseMapNode *>(node);
    if (!map) {
        // The first one, or one in place of those that went when the window was hidden.
        map = new BaseMapNode(window());
        m_isNewPicture = !m_picture.image.isNull();
    }
    const auto appearance = m_isDark ? MapAppearance::dark : MapAppearance::light;
    const double scale = m_controller ? m_controller->camera().scale() : 1;
    map->setSea(boundingRect(), BaseMapStyle::of(appearance).seaTone(0, scale));
    if (m_isNewPicture) {
        map->setTexture(window()->createTextureFromImage(m_picture.image, QQuickWindow::TextureIsOpaque));
        m_isNewPicture = false;
    }
    if (!m_picture.image.isNull() && m_controller)
        map->setPictureRect(pictureRect());
    return map;
}

void BaseMapItem::itemChange(ItemChange change, const ItemChangeData &value)
{
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged)
        pictureIsOutdated();
    QQuickItem::itemChange(change, value);
}

void BaseMapItem::componentComplete()
{
    QQuickItem::componentComplete();
    pictureIsOutdated();
}

void BaseMapItem::cameraMoved()
{
    update();
    pictureIsOutdated();
    const bool isRunningOut = !m_picture.world.contains(m_controller->camera().visibleWorld());
    if (isRunningOut)
        paint();
}

void BaseMapItem::pictureIsOutdated()
{
    ++m_wanted;
    setSharp(false);
    if (m_picture.image.isNull())
        paint();
    else
        paintOnceRested();
}

void BaseMapItem::paintOnceRested()
{
    if (m_isWaitingForRest)
        return;
    m_isWaitingForRest = true;
    m_restingSince = m_wanted;
    Platform::current().clock.sleep(restTime, [self = QPointer<BaseMapItem>(this)] {
        if (!self)
            return;
        self->m_isWaitingForRest = false;
        if (self->m_restingSince == self->m_wanted)
            self->paint();
        else
            self->paintOnceRested();
    });
}

void BaseMapItem::paint()
{
    if (m_isPainting || !isComponentComplete() || !m_controller || !window() || m_controller->size().isEmpty())
        return;
    m_isPainting = true;
    BaseMapRequest request;
    request.camera = m_controller->camera();
    request.margin = marginPart * std::max(request.camera.size().width(), request.camera.size().height());
    request.devicePixelRatio = window()->effectiveDevicePixelRatio();
    request.appearance = m_isDark ? MapAppearance::dark : MapAppearance::light;
    if (m_annotations)
        request.annotations = m_annotations->annotations(request.camera);
    for (const QQuickItem *cover : m_covers)
        request.covers.push_back(mapRectFromItem(cover, cover->boundingRect()));
    whenFinished(painted(request), this, [this, wanted = m_wanted](const QFuture<BaseMapPicture> &picture) {
        m_isPainting = false;
        take(picture.result(), wanted);
    });
}

void BaseMapItem::take(const BaseMapPicture &picture, quint64 wanted)
{
    m_picture = picture;
    m_isNewPicture = true;
    update();
    if (wanted == m_wanted)
        setSharp(true);
    else
        paintOnceRested();
}

void BaseMapItem::setSharp(bool isSharp)
{
    if (m_isSharp == isSharp)
        return;
    m_isSharp = isSharp;
    Q_EMIT isSharpChanged();
}

QRectF BaseMapItem::pictureRect() const
{
    const MapCamera &camera = m_controller->camera();
    QPointF corner = camera.toScreen(m_picture.world.topLeft());
    const double ratio = m_picture.image.devicePixelRatio();
    if (camera.scale() != m_picture.scale)
        return {corner, m_picture.world.size() * camera.scale()};
    // At its own scale the picture stays sharp as long as its pixels lie on the screen's.
    corner = QPointF(std::round(corner.x() * ratio), std::round(corner.y() * ratio)) / ratio;
    return {corner, QSizeF(m_picture.image.size()) / ratio};
}
