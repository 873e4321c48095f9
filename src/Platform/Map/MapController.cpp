// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/MapController.h"

#include "Platform/Clock/Clock.h"
#include "Platform/Support/Platform.h"

#include <cmath>
#include <numbers>

namespace {
/// Where the base map has data, a little inside its edges.
const MapLimits basemapLimits{{{29.25, -15}, {28.3, 41.8}}, 40, 0.02};
/// Of an arrow key, as a part of the window.
constexpr double arrowPart = 0.2;
/// Eighths of a degree by which a wheel turns to double the scale: two notches of 15 degrees.
constexpr double angleToDouble = 240;
/// Seconds in which a zoom goes all but 1/e of what is left.
constexpr double zoomTime = 0.07;
/// A finger that rested longer than this before it was lifted throws nothing.
constexpr auto restTime = std::chrono::milliseconds(60);

Instant now()
{
    return Platform::current().clock.now();
}
}

MapController::MapController(QObject *parent)
    : QObject(parent)
    , m_camera(basemapLimits)
{
}

MapController::ScaleBar MapController::scaleBar() const
{
    const double latitude = WebMercator::toCoordinate(m_camera.center()).latitude;
    const double metersPerPixel = 111'320 * std::cos(latitude * std::numbers::pi / 180) / m_camera.scale();
    const double widest = widestScaleBar * metersPerPixel;
    const double power = std::pow(10, std::floor(std::log10(widest)));
    const double meters = power * (widest >= 5 * power ? 5 : widest >= 2 * power ? 2 : 1);
    return {meters, meters / metersPerPixel};
}

double MapController::scaleBarWidth() const
{
    return std::round(scaleBar().pixels);
}

QString MapController::scaleBarText() const
{
    const double meters = scaleBar().meters;
    return meters >= 1000 ? QStringLiteral("%1 km").arg(std::round(meters / 1000))
                          : QStringLiteral("%1 m").arg(std::round(meters));
}

void MapController::setRegion(const CoordinateRegion &region)
{
    if (m_region == region)
        return;
    m_region = region;
    fitRegion();
    Q_EMIT regionChanged();
}

void MapController::setSize(const QSizeF &size)
{
    if (size == m_camera.size() || size.isEmpty())
        return;
    m_camera.resize(size);
    fitRegion();
    Q_EMIT cameraChanged();
}

void MapController::setTopCover(double pixels)
{
    if (m_topCover == pixels)
        return;
    m_topCover = pixels;
    fitRegion();
    Q_EMIT regionChanged();
}

void MapController::setStill(bool isStill)
{
    if (m_isStill == isStill)
        return;
    m_isStill = isStill;
    Q_EMIT isStillChanged();
}

void MapController::grab()
{
    m_wasMovedByUser = true;
    m_velocity = {};
    m_pinched = 1;
    m_zoomLeft = 0;
    m_throw = MapThrow();
    setRunning(false);
}

void MapController::drag(double dx, double dy)
{
    const Instant moment = now();
    const double seconds = std::max(secondsBetween(m_lastDrag, moment), 0.004);
    // The last of many small steps says little alone: half of what was known before stays.
    m_velocity = seconds > 0.1 ? QPointF() : m_velocity * 0.5 + QPointF(dx, dy) / seconds * 0.5;
    m_lastDrag = moment;
    m_wasMovedByUser = true;
    m_camera.pan({dx, dy});
    Q_EMIT cameraChanged();
}

void MapController::release()
{
    if (m_isStill || now() - m_lastDrag > restTime)
        return;
    m_throw = MapThrow(m_velocity);
    m_thrownSeconds = 0;
    setRunning(m_throw.duration() > 0);
}

void MapController::pinch(double factor, double x, double y)
{
    m_camera.zoom(factor / m_pinched, {x, y});
    m_pinched = factor;
    Q_EMIT cameraChanged();
}

void MapController::turnWheel(double angle, double x, double y)
{
    zoomSmoothly(std::exp2(angle / angleToDouble), {x, y});
}

void MapController::zoomInAt(double x, double y)
{
    zoomSmoothly(2, {x, y});
}

void MapController::zoomIn()
{
    zoomSmoothly(2, {m_camera.size().width() / 2, (m_camera.size().height() + m_topCover) / 2});
}

void MapController::zoomOut()
{
    zoomSmoothly(0.5, {m_camera.size().width() / 2, (m_camera.size().height() + m_topCover) / 2});
}

void MapController::showRegion()
{
    grab();
    m_wasMovedByUser = false;
    fitRegion();
    Q_EMIT cameraChanged();
}

bool MapController::pressKey(int key, int modifiers)
{
    // Plus needs Shift on many keyboards, and the number pad is as good as the row above the letters.
    if (modifiers & ~(Qt::ShiftModifier | Qt::KeypadModifier))
        return false;
    const double dx = m_camera.size().width() * arrowPart;
    const double dy = m_camera.size().height() * arrowPart;
    const auto move = [this](double x, double y) {
        grab();
        m_camera.pan({x, y});
        Q_EMIT cameraChanged();
    };
    switch (key) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        zoomIn();
        return true;
    case Qt::Key_Minus:
        zoomOut();
        return true;
    case Qt::Key_0:
        showRegion();
        return true;
    case Qt::Key_Left:
        move(dx, 0);
        return true;
    case Qt::Key_Right:
        move(-dx, 0);
        return true;
    case Qt::Key_Up:
        move(0, dy);
        return true;
    case Qt::Key_Down:
        move(0, -dy);
        return true;
    default:
        return false;
    }
}

void MapController::advance(double seconds)
{
    if (m_throw.duration() > 0) {
        const QPointF before = m_throw.travelled(m_thrownSeconds);
        m_thrownSeconds += seconds;
        m_camera.pan(m_throw.travelled(m_thrownSeconds) - before);
        if (m_thrownSeconds >= m_throw.duration())
            m_throw = MapThrow();
    }
    if (m_zoomLeft != 0) {
        const double step =
            std::abs(m_zoomLeft) < 0.002 ? m_zoomLeft : m_zoomLeft * (1 - std::exp(-seconds / zoomTime));
        m_camera.zoom(std::exp(step), m_zoomAnchor);
        m_zoomLeft -= step;
    }
    Q_EMIT cameraChanged();
    setRunning(m_throw.duration() > 0 || m_zoomLeft != 0);
}

void MapController::reveal(const QPointF &world, const QMarginsF &covered, double margin)
{
    const QRectF free = QRectF(QPointF(), m_camera.size()).marginsRemoved(covered + margin);
    const QPointF place = m_camera.toScreen(world);
    const QPointF inside(std::clamp(place.x(), free.left(), std::max(free.left(), free.right())),
                         std::clamp(place.y(), free.top(), std::max(free.top(), free.bottom())));
    if (inside == place)
        return;
    grab();
    m_camera.pan(inside - place);
    Q_EMIT cameraChanged();
}

void MapController::fitRegion()
{
    if (m_wasMovedByUser)
        return;
    m_camera.fit(m_region, {0, m_topCover, 0, 0});
    Q_EMIT cameraChanged();
}

void MapController::zoomSmoothly(double factor, const QPointF &anchor)
{
    m_wasMovedByUser = true;
    m_throw = MapThrow();
    m_zoomAnchor = anchor;
    m_zoomLeft += std::log(factor);
    if (m_isStill)
        advance(60);
    else
        setRunning(true);
}

void MapController::setRunning(bool isRunning)
{
    if (m_isRunning == isRunning)
        return;
    m_isRunning = isRunning;
    Q_EMIT isRunningChanged();
}
