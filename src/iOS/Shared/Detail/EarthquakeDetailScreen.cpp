// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/Detail/EarthquakeDetailScreen.h"

#include "Platform/Map/WebMercator.h"
#include "Platform/Support/Follow.h"
#include "Platform/Text/NumberFormat.h"

namespace {
constexpr double spanDegrees = 0.3;
}

EarthquakeDetailScreen::EarthquakeDetailScreen(QObject *parent)
    : QObject(parent)
    , m_dates(DateFormatter::Form::skeleton, QStringLiteral("dMMMyjms"), QStringLiteral("UTC"))
{
}

EarthquakeDetailScreen::~EarthquakeDetailScreen() = default;

void EarthquakeDetailScreen::componentComplete()
{
    if (!m_event.earthquake)
        return;
    m_viewModel = std::make_unique<EarthquakeDetailViewModel>(*m_event.earthquake);
    connect(m_viewModel.get(), &EarthquakeDetailViewModel::nearbyEarthquakesChanged, this,
            [this] { m_nearby.setEarthquakes(m_viewModel->nearbyEarthquakes()); });
    m_nearby.setSelected(m_event.earthquake);
    Q_EMIT loaded();
    Q_EMIT placeChanged();
}

QString EarthquakeDetailScreen::title() const
{
    return earthquake() ? QStringLiteral("M ") + fixedText(earthquake()->magnitude(), 1) + QStringLiteral(" — ")
            + earthquake()->location()
                        : QString();
}

QString EarthquakeDetailScreen::dateText() const
{
    return earthquake() ? m_dates.string(earthquake()->date()) + QStringLiteral(" UTC") : QString();
}

QString EarthquakeDetailScreen::epicenterText() const
{
    return earthquake() ? fixedText(earthquake()->latitude(), 4) + QStringLiteral("°, ")
            + fixedText(earthquake()->longitude(), 4) + QStringLiteral("°")
                        : QString();
}

QString EarthquakeDetailScreen::depthText() const
{
    return earthquake() ? kilometersText(earthquake()->depth()) : QString();
}

QString EarthquakeDetailScreen::magnitudeText() const
{
    return earthquake() ? fixedText(earthquake()->magnitude(), 1) + u' ' + earthquake()->magnitudeType() : QString();
}

bool EarthquakeDetailScreen::hasMaxIntensity() const
{
    return earthquake() && earthquake()->maxIntensity().has_value();
}

QString EarthquakeDetailScreen::maxIntensity() const
{
    return hasMaxIntensity() ? *earthquake()->maxIntensity() : QString();
}

QString EarthquakeDetailScreen::location() const
{
    return earthquake() ? earthquake()->location() : QString();
}

QColor EarthquakeDetailScreen::color() const
{
    return earthquake() ? earthquake()->magnitudeCategory().color() : QColor();
}

CoordinateRegion EarthquakeDetailScreen::region() const
{
    return {earthquake() ? earthquake()->coordinate() : Coordinate{}, {spanDegrees, spanDegrees}};
}

QPointF EarthquakeDetailScreen::place() const
{
    if (!m_controller || !earthquake())
        return {};
    return m_controller->camera().toScreen(WebMercator::toWorld(earthquake()->coordinate()));
}

void EarthquakeDetailScreen::setController(MapController *controller)
{
    if (!follow(m_controller, controller, this, &MapController::cameraChanged, &EarthquakeDetailScreen::placeChanged))
        return;
    Q_EMIT controllerChanged();
    Q_EMIT placeChanged();
}

void EarthquakeDetailScreen::appear()
{
    if (m_viewModel)
        m_viewModel->loadNearby(m_container->mainContext());
}
