// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/MainTabScreen.h"

#include "Core/DataSources/EarthquakeDataSource.h"
#include "Core/Notifications/FirstLaunchRequest.h"

MainTabScreen::MainTabScreen(QObject *parent)
    : QObject(parent)
{
    QMetaObject::invokeMethod(this, requestNotificationPermissionOnFirstLaunch, Qt::QueuedConnection);
}

MainTabScreen::~MainTabScreen()
{
    EarthquakeRepository::retire(std::move(m_repository), m_container);
}

void MainTabScreen::setContainer(ModelContainer *container)
{
    Q_ASSERT(container && !m_container);
    m_container = container;
    m_repository = std::make_unique<EarthquakeRepository>(container->mainContext());
    Q_EMIT containerChanged();
}
