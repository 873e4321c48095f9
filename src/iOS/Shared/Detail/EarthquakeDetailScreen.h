// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Persistence/ModelContainer.h"
#include "Core/ViewModels/EarthquakeDetailViewModel.h"
#include "Platform/Map/MapController.h"
#include "Platform/Text/DateFormatter.h"
#include "iOS/Shared/EarthquakeMarkerSet.h"
#include "iOS/Shared/EarthquakeReference.h"

#include <QObject>
#include <QPointer>
#include <QQmlParserStatus>
#include <QtQmlIntegration>

#include <memory>

/// One event behind its QML: the texts of its rows, where the map begins, and the events around it. Made by the QML
/// with its page, and dies with it.
class EarthquakeDetailScreen : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(ModelContainer *container MEMBER m_container REQUIRED)
    Q_PROPERTY(EarthquakeReference event MEMBER m_event REQUIRED)
    Q_PROPERTY(MapController *controller READ controller WRITE setController NOTIFY controllerChanged)
    Q_PROPERTY(QString title READ title NOTIFY loaded)
    Q_PROPERTY(QString dateText READ dateText NOTIFY loaded)
    Q_PROPERTY(QString epicenterText READ epicenterText NOTIFY loaded)
    Q_PROPERTY(QString depthText READ depthText NOTIFY loaded)
    Q_PROPERTY(QString magnitudeText READ magnitudeText NOTIFY loaded)
    Q_PROPERTY(bool hasMaxIntensity READ hasMaxIntensity NOTIFY loaded)
    Q_PROPERTY(QString maxIntensity READ maxIntensity NOTIFY loaded)
    Q_PROPERTY(QString location READ location NOTIFY loaded)
    Q_PROPERTY(QColor color READ color NOTIFY loaded)
    Q_PROPERTY(CoordinateRegion region READ region NOTIFY loaded)
    Q_PROPERTY(EarthquakeMarkerSet *nearby READ nearby CONSTANT)
    Q_PROPERTY(QPointF place READ place NOTIFY placeChanged)

public:
    explicit EarthquakeDetailScreen(QObject *parent = nullptr);
    ~EarthquakeDetailScreen() override;

    void classBegin() override { }
    void componentComplete() override;

    MapController *controller() const { return m_controller; }
    /// Magnitude and place name.
    QString title() const;
    /// Universal time, in the form of the user's locale.
    QString dateText() const;
    /// Latitude and longitude with their signs, to four decimal places.
    QString epicenterText() const;
    QString depthText() const;
    /// With the label of its scale.
    QString magnitudeText() const;
    bool hasMaxIntensity() const;
    /// Empty where none was reported.
    QString maxIntensity() const;
    QString location() const;
    QColor color() const;
    /// What the map shows first: 0.3 degrees round the event, whatever lies around it.
    CoordinateRegion region() const;
    EarthquakeMarkerSet *nearby() { return &m_nearby; }
    /// Where the event is on the map, in the map's pixels.
    QPointF place() const;

    void setController(MapController *controller);

    /// Reads the events around it.
    Q_INVOKABLE void appear();

Q_SIGNALS:
    void loaded();
    void controllerChanged();
    void placeChanged();

private:
    const Earthquake *earthquake() const { return m_viewModel ? &m_viewModel->earthquake() : nullptr; }

    ModelContainer *m_container = nullptr;
    EarthquakeReference m_event;
    QPointer<MapController> m_controller;
    std::unique_ptr<EarthquakeDetailViewModel> m_viewModel;
    EarthquakeMarkerSet m_nearby;
    DateFormatter m_dates;
};
