// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QObject>
#include <QQmlApplicationEngine>

#include <memory>

class PersistenceController;
class QWindow;

/// The application over the installed platform: the one store, then main windows over its main context, the first at
/// once and another whenever one is asked for. It starts no refresh of its own; its screens do. Made once, after the
/// platform and before the event loop runs.
class orvaliaApp : public QObject
{
    Q_OBJECT

public:
    /// What a main window holds: the desktop's sidebar and sections, or the tabs of a phone.
    enum class Root { desktop, phone };

    /// Opens the store and shows the main window. A store that cannot be opened ends the program here with status 1:
    /// one line on standard error and then, where somebody can see it, a window that says the same.
    explicit orvaliaApp(Root root = Root::desktop);
    ~orvaliaApp() override;

    /// Runs until the last window is closed. Gives the program's exit status: 1, at once, when there is no window.
    int run();

    /// Shows the permissions window, in front; at most one.
    void showPermissions();

    /// Puts the main window in use before all others; a new one when all are closed.
    void comeToFront();

private:
    void openMainWindow();
    /// Those not closed.
    QList<QWindow *> mainWindows() const;
    void dropClosedWindows();

    Root m_root;
    PersistenceController &m_persistenceController;
    QQmlApplicationEngine m_engine;
    /// Null before it was first shown. Goes before the engine, whose end takes the theme away.
    std::unique_ptr<QObject> m_permissionsWindow;
};
