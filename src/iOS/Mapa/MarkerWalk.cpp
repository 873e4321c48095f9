// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Mapa/MarkerWalk.h"

#include "Platform/Text/Localization.h"
#include "Platform/Text/NumberFormat.h"
#include "Platform/Text/OneLine.h"

namespace {
/// An event this near to the edge of what shows is brought further in.
constexpr double edgePixels = 48;
}

MarkerWalk::MarkerWalk(QObject *parent)
    : QObject(parent)
{
}

void MarkerWalk::componentComplete()
{
    connect(m_layer->controller(), &MapController::cameraChanged, this, &MarkerWalk::changed);
    connect(m_layer, &MapAnnotationSource::annotationsChanged, this, &MarkerWalk::changed);
    connect(m_screen, &MapScreen::calloutChanged, this, &MarkerWalk::changed);
}

bool MarkerWalk::isOnMap() const
{
    return m_current && m_layer && m_layer->indexOf(*m_current);
}

QPointF MarkerWalk::position() const
{
    return isOnMap() ? m_layer->place(*m_current) : QPointF();
}

double MarkerWalk::diameter() const
{
    const bool isOnSelected = isOnMap() && m_screen->viewModel()->selectedEarthquake() == m_current;
    return isOnSelected ? 2 * MarkerLook::selectedReach : MarkerLook().diameter;
}

QString MarkerWalk::text() const
{
    if (!isOnMap())
        return {};
    return formatted(
        localized("map.marker.sentence", QStringLiteral("Magnitud %@, %@, %@")),
        {fixedText(m_current->magnitude(), 1), oneLine(m_current->location()), m_screen->dateText(*m_current)});
}

bool MarkerWalk::pressKey(int key, int modifiers)
{
    const bool hasAlt = (modifiers & ~Qt::KeypadModifier) == Qt::AltModifier;
    switch (key) {
    case Qt::Key_Left:
        return hasAlt && go(MarkerIndex::Direction::left);
    case Qt::Key_Right:
        return hasAlt && go(MarkerIndex::Direction::right);
    case Qt::Key_Up:
        return hasAlt && go(MarkerIndex::Direction::up);
    case Qt::Key_Down:
        return hasAlt && go(MarkerIndex::Direction::down);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return openCallout();
    case Qt::Key_Escape:
        return closeCallout();
    default:
        return false;
    }
}

void MarkerWalk::tap(const QPointF &point, bool byFinger)
{
    const std::optional<Earthquake> tapped = m_layer->earthquakeAt(point, byFinger);
    if (!tapped)
        return;
    m_current = tapped;
    m_screen->toggle(*tapped);
}

bool MarkerWalk::go(MarkerIndex::Direction direction)
{
    const auto &selected = m_screen->viewModel()->selectedEarthquake();
    const QSizeF size = m_layer->controller()->size();
    std::optional<Earthquake> next;
    if (isOnMap())
        next = m_layer->nearest(*m_current, direction);
    else if (selected && m_layer->indexOf(*selected))
        next = m_layer->nearest(*selected, direction);
    else
        next = m_layer->nearestTo({size.width() / 2, (size.height() + m_topCover - m_bottomCover) / 2});
    if (!next)
        return true;
    m_current = next;
    m_layer->controller()->reveal(WebMercator::toWorld(next->coordinate()), {0, m_topCover, 0, m_bottomCover},
                                  edgePixels);
    Q_EMIT changed();
    return true;
}

bool MarkerWalk::openCallout()
{
    if (!isOnMap())
        return false;
    m_screen->toggle(*m_current);
    return true;
}

bool MarkerWalk::closeCallout()
{
    if (!m_screen->hasCallout())
        return false;
    m_screen->dismissCallout();
    return true;
}
