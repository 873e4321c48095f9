// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Persistence/ModelContainer.h"
#include "Core/Repositories/EarthquakeRepository.h"
#include "Core/ViewModels/MapViewModel.h"
#include "Platform/Text/DateFormatter.h"
#include "iOS/Shared/EarthquakeMarkerLayer.h"
#include "iOS/Shared/EarthquakeReference.h"

#include <QObject>
#include <QQmlParserStatus>
#include <QtQmlIntegration>

#include <memory>

/// The map behind its QML: which events are on it, which one is selected, and what the callout says. It reckons
/// everything anew at each change of the events, of its model or of the repository, and once a minute. Made by the QML
/// with its screen, and dies with it.
class MapScreen : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(ModelContainer *container MEMBER m_container REQUIRED)
    Q_PROPERTY(EarthquakeRepository *repository MEMBER m_repository REQUIRED)
    Q_PROPERTY(CoordinateRegion region READ region CONSTANT)
    Q_PROPERTY(EarthquakeMarkerSet *markers READ markers CONSTANT)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY redrawn)
    Q_PROPERTY(int selectedFilter READ selectedFilter WRITE setSelectedFilter NOTIFY redrawn)
    Q_PROPERTY(int selectedDateFilter READ selectedDateFilter WRITE setSelectedDateFilter NOTIFY redrawn)
    Q_PROPERTY(bool hasFilter READ hasFilter NOTIFY redrawn)
    Q_PROPERTY(bool hasCallout READ hasCallout NOTIFY calloutChanged)
    /// What the callout says; of the last one while it goes.
    Q_PROPERTY(QString location READ location NOTIFY calloutChanged)
    Q_PROPERTY(QString dateText READ dateText NOTIFY calloutChanged)
    Q_PROPERTY(double magnitude READ magnitude NOTIFY calloutChanged)
    Q_PROPERTY(QString magnitudeType READ magnitudeType NOTIFY calloutChanged)
    Q_PROPERTY(QString depthText READ depthText NOTIFY calloutChanged)
    Q_PROPERTY(bool showFilterPopover MEMBER m_showFilterPopover NOTIFY showFilterPopoverChanged)
    Q_PROPERTY(bool showSettings MEMBER m_showSettings NOTIFY showSettingsChanged)

public:
    explicit MapScreen(QObject *parent = nullptr);
    ~MapScreen() override;

    void classBegin() override { }
    void componentComplete() override;

    CoordinateRegion region() const;
    EarthquakeMarkerSet *markers() { return &m_markers; }
    bool isLoading() const;
    /// A MagnitudeFilter::Choice.
    int selectedFilter() const;
    /// A DateFilter::Choice.
    int selectedDateFilter() const;
    bool hasFilter() const { return selectedFilter() != 0 || selectedDateFilter() != 0; }
    bool hasCallout() const;
    QString location() const;
    QString dateText() const { return m_called ? dateText(*m_called) : QString(); }
    /// When an event was, in universal time.
    QString dateText(const Earthquake &earthquake) const;
    double magnitude() const;
    QString magnitudeType() const;
    QString depthText() const;
    /// The screen is on show, so that it is the one to answer the menu.
    bool isActive() const { return m_isActive; }
    MapViewModel *viewModel() const { return m_viewModel.get(); }

    void setSelectedFilter(int choice);
    void setSelectedDateFilter(int choice);

    Q_INVOKABLE void appear();
    Q_INVOKABLE void disappear();
    Q_INVOKABLE void resetFilters();
    /// A marker is under the pointer.
    Q_INVOKABLE bool hasMarkerAt(EarthquakeMarkerLayer *layer, const QPointF &point) const;
    Q_INVOKABLE void dismissCallout();
    Q_INVOKABLE void viewDetail();
    /// Selects an event, or ends the selection of this one.
    void toggle(const Earthquake &earthquake);

Q_SIGNALS:
    void redrawn();
    void calloutChanged();
    void showFilterPopoverChanged();
    void showSettingsChanged();
    /// The selected event wants to be seen in full.
    void detailRequested(const EarthquakeReference &event);

private:
    void watch();
    void tick(Task &task);
    void redraw();
    void showSelection();
    /// What the filters let through of the events, at one moment.
    struct Choice
    {
        std::optional<MagnitudeCategory> category;
        /// Only among so many of the newest events.
        qsizetype newest;

        bool operator==(const Choice &) const = default;
    };
    std::vector<Earthquake> chosen(const Choice &choice) const;
    void answerMenu(const QString &notification);

    ModelContainer *m_container = nullptr;
    EarthquakeRepository *m_repository = nullptr;
    std::unique_ptr<MapViewModel> m_viewModel;
    Task::Handle m_redrawTask;
    DateFormatter m_dates;
    EarthquakeMarkerSet m_markers;
    /// What the markers are of; absent once other events are stored.
    std::optional<Choice> m_shown;
    std::optional<Earthquake> m_called;
    bool m_isActive = false;
    bool m_showFilterPopover = false;
    bool m_showSettings = false;
};
