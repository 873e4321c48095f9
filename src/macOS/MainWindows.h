// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QObject>

#include <memory>

class QQmlEngine;
class QWindow;

/// The main windows that there are, the last used one first, and the one settings window that they share.
class MainWindows : public QObject
{
    Q_OBJECT

public:
    /// The instance that every main window uses.
    static MainWindows &shared();
    ~MainWindows() override;

    /// A main window stands behind the others until it is used. Whatever an entry is, it is compared alone.
    void add(const QObject *window);
    /// With the last main window goes the settings window.
    void remove(const QObject *window);
    void moveToFront(const QObject *window);
    void moveToBack(const QObject *window);
    /// Null when there is none.
    const QObject *front() const { return m_windows.value(0); }

    /// Shows the settings window before all others; `engine` makes it at the first time, and must live longer than the
    /// last main window.
    void openSettings(QQmlEngine &engine);
    bool showsSettings() const;

Q_SIGNALS:
    void changed();
    /// The user wants another main window; the program opens it.
    void newWindowWanted();

private:
    MainWindows();

    QList<const QObject *> m_windows;
    std::unique_ptr<QWindow> m_settings;
};
