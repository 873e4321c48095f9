// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Persistence/ModelContainer.h"
#include "Core/ViewModels/HistoricoViewModel.h"
#include "iOS/Shared/EarthquakeSectionModel.h"

#include <QObject>
#include <QtQmlIntegration>

/// The history behind its QML: what fills the screen, the rows of what is loaded, and the state of search and sheet.
/// While a load runs the rows stay as they are, so that a list that comes back the same keeps its place. Made by the
/// QML with its screen, and dies with it.
class HistoricoScreen : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(ModelContainer *container MEMBER m_container REQUIRED)
    Q_PROPERTY(HistoricoViewModel *viewModel READ viewModel CONSTANT)
    Q_PROPERTY(Filling filling READ filling NOTIFY redrawn)
    /// Its sections have their titles for ids.
    Q_PROPERTY(EarthquakeSectionModel *rows READ rows CONSTANT)
    Q_PROPERTY(QString subtitle READ subtitle NOTIFY redrawn)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY redrawn)
    Q_PROPERTY(bool hasMore READ hasMore NOTIFY redrawn)
    Q_PROPERTY(bool hasFilter READ hasFilter NOTIFY redrawn)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(bool isSearchPresented READ isSearchPresented WRITE setSearchPresented NOTIFY searchPresentedChanged)
    Q_PROPERTY(bool showFilterSheet MEMBER m_showFilterSheet NOTIFY showFilterSheetChanged)

public:
    /// What fills the screen below its toolbar.
    enum class Filling { Loading, Empty, List };
    Q_ENUM(Filling)

    explicit HistoricoScreen(QObject *parent = nullptr);

    HistoricoViewModel *viewModel() { return &m_viewModel; }
    Filling filling() const { return m_filling; }
    EarthquakeSectionModel *rows() { return &m_rows; }
    /// Which event is the newest; empty when nothing is loaded.
    QString subtitle() const { return m_viewModel.navSubtitle().value_or(QString()); }
    bool isLoading() const { return m_viewModel.isLoading(); }
    /// There is a page to load; while a load runs, whether there was one before.
    bool hasMore() const { return m_hasMore; }
    bool hasFilter() const;
    QString searchText() const { return m_viewModel.searchText(); }
    bool isSearchPresented() const { return m_isSearchPresented; }
    /// The screen is on show, so that it is the one to answer the menu.
    bool isActive() const { return m_isActive; }

    void setSearchText(const QString &text) { m_viewModel.setSearchText(text); }
    /// Leaving the search empties its text.
    void setSearchPresented(bool isPresented);

    Q_INVOKABLE void appear();
    Q_INVOKABLE void disappear();
    /// Posts the load of the next page.
    Q_INVOKABLE void loadMore();

Q_SIGNALS:
    void redrawn();
    void searchTextChanged();
    void searchPresentedChanged();
    void showFilterSheetChanged();

private:
    void redrawLater();
    void redraw();
    void showRows();
    void answerMenu(const QString &notification);

    ModelContainer *m_container = nullptr;
    HistoricoViewModel m_viewModel;
    EarthquakeSectionModel m_rows;
    Filling m_filling = Filling::Empty;
    bool m_hasMore = false;
    bool m_isRedrawDue = false;
    bool m_isSearchPresented = false;
    bool m_isActive = false;
    bool m_showFilterSheet = false;
};
