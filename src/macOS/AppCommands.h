// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QObject>
#include <QtQmlIntegration>

/// What the entries of the main menu do. It knows no screen: it posts names, which reach every main window, writes the
/// selection that these share, and asks for a new one.
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
    /// Asks for another main window; the program opens it.
    Q_INVOKABLE void openWindow() const;
};
