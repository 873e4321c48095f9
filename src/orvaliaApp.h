// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QObject>
#include <QQmlApplicationEngine>

#include <memory>

class PersistenceController;

/// The application over the installed platform: the one store, then the main window over its main context. It starts
/// no refresh of its own; its screens do. Made once, after the platform and before the event loop runs.
class orvaliaApp : public QObject
{
    Q_OBJECT

public:
    /// Opens the store and shows the main window. A store that cannot be opened ends the program here with status 1:
    /// one line on standard error and then, where somebody can see it, a window that says the same.
    orvaliaApp();
    ~orvaliaApp() override;

    /// Runs until the last window is closed. Gives the program's exit status: 1, at once, when there is no window.
    int run();

    /// Shows the permissions window, in front; at most one.
    void showPermissions();

private:
    PersistenceController &m_persistenceController;
    QQmlApplicationEngine m_engine;
    /// Null before it was first shown. Goes before the engine, whose end takes the theme away.
    std::unique_ptr<QObject> m_permissionsWindow;
};
