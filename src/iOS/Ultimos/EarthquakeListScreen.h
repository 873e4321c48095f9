// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Persistence/ModelContainer.h"
#include "Core/Repositories/EarthquakeRepository.h"
#include "Core/ViewModels/EarthquakeListViewModel.h"
#include "Platform/Text/DateFormatter.h"
#include "iOS/Shared/EarthquakeSectionModel.h"
#include "iOS/Ultimos/RecentEarthquakes.h"

#include <QObject>
#include <QQmlParserStatus>
#include <QVariantMap>
#include <QtQmlIntegration>

#include <memory>

/// The recent list behind its QML: what fills the screen, the rows and their sections, and the state of search and
/// popover. It reckons everything anew at each change of the events, of its model or of the repository, and once a
/// minute. Made by the QML with its screen, and dies with it.
class EarthquakeListScreen : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(ModelContainer *container MEMBER m_container REQUIRED)
    Q_PROPERTY(EarthquakeRepository *repository MEMBER m_repository REQUIRED)
    Q_PROPERTY(Filling filling READ filling NOTIFY redrawn)
    Q_PROPERTY(EarthquakeSectionModel *rows READ rows CONSTANT)
    Q_PROPERTY(QVariantMap sectionTitles READ sectionTitles NOTIFY redrawn)
    Q_PROPERTY(QString subtitle READ subtitle NOTIFY redrawn)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY redrawn)
    Q_PROPERTY(bool isCoolingDown READ isCoolingDown NOTIFY redrawn)
    Q_PROPERTY(double cooldownProgress READ cooldownProgress NOTIFY redrawn)
    Q_PROPERTY(int selectedFilter READ selectedFilter WRITE setSelectedFilter NOTIFY redrawn)
    Q_PROPERTY(int selectedDateFilter READ selectedDateFilter WRITE setSelectedDateFilter NOTIFY redrawn)
    Q_PROPERTY(bool hasFilter READ hasFilter NOTIFY redrawn)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(bool isSearchPresented READ isSearchPresented WRITE setSearchPresented NOTIFY searchPresentedChanged)
    Q_PROPERTY(bool showFilterPopover MEMBER m_showFilterPopover NOTIFY showFilterPopoverChanged)
    Q_PROPERTY(bool showHistorico MEMBER m_showHistorico NOTIFY showHistoricoChanged)
    Q_PROPERTY(bool showSettings MEMBER m_showSettings NOTIFY showSettingsChanged)

public:
    /// What fills the screen below its toolbar.
    enum class Filling { Loading, Empty, NoResults, List };
    Q_ENUM(Filling)

    explicit EarthquakeListScreen(QObject *parent = nullptr);
    ~EarthquakeListScreen() override;

    void classBegin() override { }
    void componentComplete() override;

    Filling filling() const { return m_filling; }
    EarthquakeSectionModel *rows() { return &m_rows; }
    /// Titles of the sections by their ids.
    QVariantMap sectionTitles() const;
    /// Title of a section; the id itself when there is no such section.
    QString sectionTitle(const QString &id) const;
    /// How old the data is; empty when nothing was ever fetched.
    QString subtitle() const;
    bool isLoading() const;
    bool isCoolingDown() const;
    /// How much of the countdown has passed, 0 to 1.
    double cooldownProgress() const;
    /// A MagnitudeFilter::Choice.
    int selectedFilter() const;
    /// A DateFilter::Choice.
    int selectedDateFilter() const;
    bool hasFilter() const { return selectedFilter() != 0 || selectedDateFilter() != 0; }
    QString searchText() const;
    bool isSearchPresented() const { return m_isSearchPresented; }
    /// The screen is on show, so that it is the one to answer the menu.
    bool isActive() const { return m_isActive; }
    const EarthquakeListViewModel *viewModel() const { return m_viewModel.get(); }

    void setSelectedFilter(int choice);
    void setSelectedDateFilter(int choice);
    void setSearchText(const QString &text);
    /// Leaving the search empties its text.
    void setSearchPresented(bool isPresented);

    Q_INVOKABLE void appear();
    Q_INVOKABLE void disappear();
    /// The user's own refresh.
    Q_INVOKABLE void manualRefresh();
    Q_INVOKABLE void resetFilters();

Q_SIGNALS:
    void redrawn();
    void searchTextChanged();
    void searchPresentedChanged();
    void showFilterPopoverChanged();
    void showHistoricoChanged();
    void showSettingsChanged();

private:
    void watch();
    void tick(Task &task);
    void redraw();
    void answerMenu(const QString &notification);

    ModelContainer *m_container = nullptr;
    EarthquakeRepository *m_repository = nullptr;
    std::unique_ptr<EarthquakeListViewModel> m_viewModel;
    Task::Handle m_subtitleTimer;
    DateFormatter m_sectionDates;
    RecentEarthquakes m_recent;
    EarthquakeSectionModel m_rows;
    /// The moment of the last redraw.
    Instant m_now{};
    Filling m_filling = Filling::Empty;
    bool m_isSearchPresented = false;
    bool m_isActive = false;
    bool m_showFilterPopover = false;
    bool m_showHistorico = false;
    bool m_showSettings = false;
};
