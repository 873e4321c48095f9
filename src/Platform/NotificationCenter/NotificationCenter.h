// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QObject>
#include <QString>

/// Names posted inside the program, by which the application and its menu reach the screens. A post carries nothing
/// but its name; the publisher knows no observers, and a post without any is harmless. Main thread only.
class NotificationCenter : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// The installed platform's centre.
    static NotificationCenter &defaultCenter();

    /// Tells every observer before it returns. An observer that wants to be told from the event loop connects to
    /// posted() with Qt::QueuedConnection.
    Q_INVOKABLE void post(const QString &name) { Q_EMIT posted(name); }

Q_SIGNALS:
    void posted(const QString &name);
};

/// The names in use.
namespace NotificationName {
inline const QString appDidBecomeActive = QStringLiteral("appDidBecomeActive");
inline const QString focusSearch = QStringLiteral("focusSearch");
inline const QString openFilter = QStringLiteral("openFilter");
inline const QString openInfo = QStringLiteral("openInfo");
inline const QString openSettings = QStringLiteral("openSettings");
inline const QString toggleSidebar = QStringLiteral("toggleSidebar");
}
