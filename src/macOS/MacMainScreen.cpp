// SPDX-License-Identifier: GPL-3.0-or-later
#include "macOS/MacMainScreen.h"

#include "Core/DataSources/EarthquakeDataSource.h"
#include "Core/Notifications/FirstLaunchRequest.h"
#include "Platform/NotificationCenter/NotificationCenter.h"
#include "macOS/MainWindows.h"

#include <QQmlEngine>

MacMainScreen::MacMainScreen(QObject *parent)
    : QObject(parent)
{
    connect(&NotificationCenter::defaultCenter(), &NotificationCenter::posted, this, &MacMainScreen::answerMenu);
    MainWindows::shared().add(this);
    connect(&MainWindows::shared(), &MainWindows::changed, this, &MacMainScreen::windowsChanged);
    QMetaObject::invokeMethod(this, requestNotificationPermissionOnFirstLaunch, Qt::QueuedConnection);
}

MacMainScreen::~MacMainScreen()
{
    MainWindows::shared().remove(this);
    EarthquakeRepository::retire(std::move(m_repository), m_container);
}

bool MacMainScreen::isFront() const
{
    return MainWindows::shared().front() == this;
}

bool MacMainScreen::showsSettings() const
{
    return MainWindows::shared().showsSettings();
}

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

void MacMainScreen::setActive(bool isActive)
{
    m_isActive = isActive;
    if (isActive)
        MainWindows::shared().moveToFront(this);
    Q_EMIT activeChanged();
}

void MacMainScreen::setClosed(bool isClosed)
{
    m_isClosed = isClosed;
    if (isClosed)
        MainWindows::shared().moveToBack(this);
    Q_EMIT closedChanged();
}

void MacMainScreen::openSettings()
{
    MainWindows::shared().openSettings(*qmlEngine(this));
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
        openSettings();
    else if (notification == NotificationName::toggleSidebar)
        toggleSidebar();
}
