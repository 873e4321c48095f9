// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Notifications/EarthquakeNotificationEvent.h"

#include <QFuture>

/// Turns alerts into notifications of the desktop, and asks the user for the permission to send them. Keeps no state
/// and makes no decisions: whether an alert is due was settled by the rules.
class NotificationManager
{
    Q_DISABLE_COPY_MOVE(NotificationManager)

public:
    static NotificationManager &shared();

    /// Whether the user allows notifications; asks where that was never answered. A failure counts as a refusal.
    QFuture<bool> requestAuthorization();

    /// Hands the alert's notification over and reports nothing. A depth or distance that no 64-bit whole number of
    /// kilometres can hold ends the process with one line on standard error.
    void send(const EarthquakeNotificationEvent &event);

private:
    NotificationManager() = default;
};
