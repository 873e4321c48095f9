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
    Q_PROPERTY(bool isNarrow READ isNarrow WRITE setNarrow NOTIFY narrowChanged)
    Q_PROPERTY(bool isActive MEMBER m_isActive WRITE setActive NOTIFY activeChanged)
    Q_PROPERTY(bool isClosed MEMBER m_isClosed WRITE setClosed NOTIFY closedChanged)
    Q_PROPERTY(bool isFront READ isFront NOTIFY windowsChanged)
    Q_PROPERTY(bool showsSettings READ showsSettings NOTIFY windowsChanged)

public:
    /// Which columns show.
    enum class ColumnVisibility { all, detailOnly };

    explicit MacMainScreen(QObject *parent = nullptr);
    ~MacMainScreen() override;

    ModelContainer *container() const { return m_container; }
    /// The repository of this window, over the container's main context; null until there is a container.
    EarthquakeRepository *repository() const { return m_repository.get(); }
    bool showsSidebar() const { return m_columnVisibility == ColumnVisibility::all; }
    /// The sidebar has no place of its own beside the content, where its own button would be in reach.
    bool needsSidebarButton() const { return !showsSidebar() || m_isNarrow; }
    /// The window is too narrow for both columns: the sidebar, when it shows, slides over the content.
    bool isNarrow() const { return m_isNarrow; }

    /// Of all main windows this is the one that was last in use.
    bool isFront() const;
    /// The settings window, which all main windows share, is open.
    bool showsSettings() const;

    /// Can be set once.
    void setContainer(ModelContainer *container);
    /// Becoming narrow folds the sidebar; it comes back with the room for it, unless the user folded it.
    void setNarrow(bool isNarrow);
    /// Whether the window has the keyboard.
    void setActive(bool isActive);
    /// A closed window answers the menu no more. It cannot be opened again.
    void setClosed(bool isClosed);

    Q_INVOKABLE void toggleSidebar();
    /// Shows the settings window, in front.
    Q_INVOKABLE void openSettings();
    /// A sidebar that slid over the content goes; one with room of its own stays.
    Q_INVOKABLE void dismissSlidingSidebar();

Q_SIGNALS:
    void containerChanged();
    void showInfoSheetChanged();
    void columnVisibilityChanged();
    void narrowChanged();
    void activeChanged();
    void closedChanged();
    void windowsChanged();

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
    bool m_isActive = false;
    /// The window was closed; the program may live on in another one. Nothing here answers the menu any more.
    bool m_isClosed = false;
};
