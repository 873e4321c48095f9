// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Support/DesktopPlatform.h"

#include "Platform/BackgroundActivity/ClockActivityScheduler.h"
#include "Platform/Location/DesktopLocationService.h"

#include <QDBusConnection>
#include <QStandardPaths>

DesktopPlatform::Files DesktopPlatform::Files::standard()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    return {.settings = SettingsUserDefaults::standardPath(),
            .permissions = StoredPermissions::standardPath(),
            .store = folder + QStringLiteral("/orvalia.sqlite")};
}

DesktopPlatform::DesktopPlatform(const QString &programId, const Files &files, const Detour &detour)
    : m_userDefaults(files.settings)
    , m_network(m_clock)
    , m_detour(detour ? detour(m_network) : nullptr)
    , m_permissions(files.permissions)
    , m_userNotificationCenter(m_permissions, QDBusConnection::sessionBus(), programId)
    , m_appearance(QDBusConnection::sessionBus())
    , m_platform{
          .clock = m_clock,
          .userDefaults = m_userDefaults,
          .urlSession = m_detour ? *m_detour : m_network,
          .notificationCenter = m_notificationCenter,
          .userNotificationCenter = m_userNotificationCenter,
          .permissions = m_permissions,
          .workspace = m_workspace,
          .appearance = m_appearance,
          .makeLocationService =
              [this, programId] {
                  return std::make_unique<DesktopLocationService>(m_permissions, QDBusConnection::systemBus(),
                                                                  programId);
              },
          .makeBackgroundActivityScheduler =
              [this](const QString &) { return std::make_unique<ClockActivityScheduler>(m_clock); },
          .storePath = files.store,
      }
{
    Platform::install(m_platform);
}

DesktopPlatform::~DesktopPlatform()
{
    Platform::uninstall();
}
