// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Persistence/ModelContainer.h"
#include "Core/Repositories/EarthquakeRepository.h"

#include <QObject>
#include <QtQmlIntegration>

#include <memory>

/// The main window behind its QML: its repository, whether the sidebar shows, and the answers to what the menu posts.
class MacMainScreen : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(ModelContainer *container READ container WRITE setContainer NOTIFY containerChanged REQUIRED)
    Q_PROPERTY(EarthquakeRepository *repository READ repository NOTIFY containerChanged)
    Q_PROPERTY(bool showInfoSheet MEMBER m_showInfoSheet NOTIFY showInfoSheetChanged)
    Q_PROPERTY(bool showsSidebar READ showsSidebar NOTIFY columnVisibilityChanged)
    Q_PROPERTY(bool needsSidebarButton READ needsSidebarButton NOTIFY columnVisibilityChanged)
    Q_PROPERTY(bool isClosed MEMBER m_isClosed NOTIFY isClosedChanged)
    Q_PROPERTY(bool isNarrow READ isNarrow WRITE setNarrow NOTIFY narrowChanged)

public:
    /// Which columns show.
    enum class ColumnVisibility { all, detailOnly };

    explicit MacMainScreen(QObject *parent = nullptr);
    ~MacMainScreen() override;

    ModelContainer *container() const { return m_container; }
    /// The repository of this window, over the container's main context; null until there is a container.
    EarthquakeRepository *repository() const { return m_repository.get(); }
    ColumnVisibility columnVisibility() const { return m_columnVisibility; }
    bool showsSidebar() const { return m_columnVisibility == ColumnVisibility::all; }
    /// The sidebar has no place of its own beside the content, where its own button would be in reach.
    bool needsSidebarButton() const { return !showsSidebar() || m_isNarrow; }
    /// The window is too narrow for both columns: the sidebar, when it shows, slides over the content.
    bool isNarrow() const { return m_isNarrow; }

    /// Can be set once.
    void setContainer(ModelContainer *container);
    /// Becoming narrow folds the sidebar; it comes back with the room for it, unless the user folded it.
    void setNarrow(bool isNarrow);

    Q_INVOKABLE void toggleSidebar();
    /// A sidebar that slid over the content goes; one with room of its own stays.
    Q_INVOKABLE void dismissSlidingSidebar();

Q_SIGNALS:
    void containerChanged();
    void showInfoSheetChanged();
    void columnVisibilityChanged();
    void narrowChanged();
    void isClosedChanged();
    /// The settings window is wanted, in front.
    void settingsRequested();

private:
    void answerMenu(const QString &notification);
    void setColumnVisibility(ColumnVisibility visibility);

    ModelContainer *m_container = nullptr;
    std::unique_ptr<EarthquakeRepository> m_repository;
    ColumnVisibility m_columnVisibility = ColumnVisibility::all;
    bool m_isNarrow = false;
    /// What the sidebar was before the window became narrow.
    ColumnVisibility m_wideVisibility = ColumnVisibility::all;
    bool m_showInfoSheet = false;
    /// The window was closed; the program may live on in another one. Nothing here answers the menu any more.
    bool m_isClosed = false;
};
