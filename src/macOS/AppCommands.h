// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QObject>
#include <QtQmlIntegration>

/// What the entries of the main menu do. It knows neither windows nor screens: it posts names and writes the shared
/// selection.
class AppCommands : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    Q_INVOKABLE void refresh() const;
    Q_INVOKABLE void toggleSidebar() const;
    Q_INVOKABLE void openSettings() const;
    /// Selects a section by the id of its SidebarItem.
    Q_INVOKABLE void navigate(const QString &id) const;
    Q_INVOKABLE void openInfo() const;
    Q_INVOKABLE void openFilter() const;
    /// Wants another main window.
    Q_INVOKABLE void openWindow() const;
};
