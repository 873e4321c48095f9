// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/UserNotifications/UserNotificationCenter.h"

#include <QDBusConnection>
#include <QHash>
#include <QObject>
#include <QPromise>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

class Permissions;
class QDBusPendingCallWatcher;

/// The desktop's notification server (org.freedesktop.Notifications), asynchronously throughout: a server that is
/// missing, hangs, dies or answers with errors costs notifications and never time.
///
/// Nothing is sent before the server has told what it can do. While the answer to a notification is outstanding, the
/// newest one with the same identifier waits for it, so that it can take its place on the screen.
class DesktopNotificationCenter : public QObject, public UserNotificationCenter
{
    Q_OBJECT

public:
    /// Speaks over `bus`, connected or not. `desktopEntry` is the name of the program's desktop file, without its
    /// suffix; the program's icon is called the same.
    DesktopNotificationCenter(Permissions &permissions, const QDBusConnection &bus, const QString &desktopEntry,
                              QObject *parent = nullptr);

    QFuture<bool> requestAuthorization() override;
    QFuture<NotificationAuthorizationStatus> authorizationStatus() override;
    void add(const UserNotificationRequest &request) override;

private:
    /// The latest notification with one identifier.
    struct Delivery
    {
        /// What the server calls it; 0 before it said.
        uint id = 0;
        /// Sent and not yet answered.
        std::optional<UserNotificationRequest> outstanding{};
        std::optional<UserNotificationRequest> waiting{};
    };

    void serverChanged(const QString &newOwner);
    void askCapabilities();
    void takeCapabilities(const QDBusPendingCallWatcher &answer);
    void deliver(const UserNotificationRequest &request);
    void takeAnswer(const QString &identifier, const QDBusPendingCallWatcher &answer);
    QVariantMap hints(InterruptionLevel level) const;
    /// Puts the user's question where it is open, and answers `promise`.
    void answerWithConsent(const std::shared_ptr<QPromise<bool>> &promise);

    Permissions &m_permissions;
    QDBusConnection m_bus;
    QString m_desktopEntry;
    /// The bus's name for the present server, so that no other gets what is meant for it. Empty before it has spoken.
    QString m_server;
    /// Absent until the present server has told.
    std::optional<QStringList> m_capabilities;
    bool m_isAsking = false;
    /// Goes up with each server; answers of earlier ones no longer count.
    int m_generation = 0;
    /// What came before the capabilities did.
    std::vector<UserNotificationRequest> m_held;
    QHash<QString, Delivery> m_deliveries;
};
