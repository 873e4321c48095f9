// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

/// Makes a call without waiting and hands its answer, a `const QDBusPendingCallWatcher &`, to `done` from the event
/// loop; never when `owner` is gone. An answer that does not come within 25 seconds is an error, and so is a bus that
/// is not connected: Qt alone would leave that one unanswered.
template<class Done>
void callAsync(const QDBusConnection &bus, const QDBusMessage &message, QObject *owner, Done done)
{
    const QDBusError noBus(QDBusError::Disconnected, QStringLiteral("not connected to the bus"));
    auto *watcher = new QDBusPendingCallWatcher(
        bus.isConnected() ? bus.asyncCall(message) : QDBusPendingCall::fromError(noBus), owner);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, owner, [watcher, done] {
        watcher->deleteLater();
        done(*watcher);
    });
}
