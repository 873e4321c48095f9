// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QFuture>
#include <QString>

/// How urgently a notification asks for attention.
enum class InterruptionLevel { active, timeSensitive };

/// The user's standing answer to "may this program notify you?".
enum class NotificationAuthorizationStatus { notDetermined, denied, authorized, provisional, ephemeral };

/// One notification, all of it plain text. It is shown at once, with the desktop's default sound.
struct UserNotificationRequest
{
    /// A later request with the identifier of an earlier one takes the earlier one's place.
    QString identifier;
    QString title;
    QString body;
    InterruptionLevel interruptionLevel = InterruptionLevel::active;

    bool operator==(const UserNotificationRequest &) const = default;
};

/// The desktop's notifications, and the permission to send them. Never blocks.
class UserNotificationCenter
{
public:
    virtual ~UserNotificationCenter() = default;

    /// Asks the user, the first time; later calls give the remembered answer. Fails with an exception where the
    /// desktop has no notification service.
    virtual QFuture<bool> requestAuthorization() = 0;

    virtual QFuture<NotificationAuthorizationStatus> authorizationStatus() = 0;

    /// Hands a notification over and reports nothing: without permission or without a service it is dropped.
    virtual void add(const UserNotificationRequest &request) = 0;
};
