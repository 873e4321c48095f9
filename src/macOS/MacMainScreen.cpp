// SPDX-License-Identifier: GPL-3.0-or-later
#include "macOS/MacMainScreen.h"

#include "Core/DataSources/EarthquakeDataSource.h"
#include "Core/Notifications/FirstLaunchRequest.h"
#include "Platform/NotificationCenter/NotificationCenter.h"

MacMainScreen::MacMainScreen(QObject *parent)
    : QObject(parent)
{
    connect(&NotificationCenter::defaultCenter(), &NotificationCenter::posted, this, &MacMainScreen::answerMenu);
    QMetaObject::invokeMethod(this, requestNotificationPermissionOnFirstLaunch, Qt::QueuedConnection);
}

MacMainScreen::~MacMainScreen() = default;

void MacMainScreen::setContainer(ModelContainer *container)
{
    Q_ASSERT(container && !m_container);
    m_container = container;
    m_repository = std::make_unique<EarthquakeRepository>(container->mainContext());
    Q_EMIT containerChanged();
}

void MacMainScreen::setNarrow(bool isNarrow)
{
    if (isNarrow == m_isNarrow)
        return;
    m_isNarrow = isNarrow;
    if (isNarrow)
        m_wideVisibility = m_columnVisibility;
    setColumnVisibility(isNarrow ? ColumnVisibility::detailOnly : m_wideVisibility);
    Q_EMIT narrowChanged();
}

void MacMainScreen::toggleSidebar()
{
    setColumnVisibility(showsSidebar() ? ColumnVisibility::detailOnly : ColumnVisibility::all);
}

void MacMainScreen::dismissSlidingSidebar()
{
    if (m_isNarrow && showsSidebar())
        setColumnVisibility(ColumnVisibility::detailOnly);
}

void MacMainScreen::setColumnVisibility(ColumnVisibility visibility)
{
    m_columnVisibility = visibility;
    Q_EMIT columnVisibilityChanged();
}

void MacMainScreen::answerMenu(const QString &notification)
{
    if (m_isClosed)
        return;
    if (notification == NotificationName::openInfo)
        setProperty("showInfoSheet", true);
    else if (notification == NotificationName::openSettings)
        Q_EMIT settingsRequested();
    else if (notification == NotificationName::toggleSidebar)
        toggleSidebar();
}
