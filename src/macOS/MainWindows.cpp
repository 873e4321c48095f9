// SPDX-License-Identifier: GPL-3.0-or-later
#include "macOS/MainWindows.h"

#include "Platform/Support/Platform.h"

#include <QQmlComponent>
#include <QWindow>

MainWindows::MainWindows() = default;

MainWindows::~MainWindows() = default;

MainWindows &MainWindows::shared()
{
    return Platform::shared<MainWindows>([] { return new MainWindows; });
}

void MainWindows::add(const QObject *window)
{
    m_windows.append(window);
    Q_EMIT changed();
}

void MainWindows::remove(const QObject *window)
{
    m_windows.removeOne(window);
    if (m_windows.isEmpty())
        m_settings.reset();
    Q_EMIT changed();
}

void MainWindows::moveToFront(const QObject *window)
{
    m_windows.move(m_windows.indexOf(window), 0);
    Q_EMIT changed();
}

void MainWindows::moveToBack(const QObject *window)
{
    m_windows.move(m_windows.indexOf(window), m_windows.size() - 1);
    Q_EMIT changed();
}

void MainWindows::openSettings(QQmlEngine &engine)
{
    if (!m_settings) {
        QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qt/qml/orvalia/Shell/SettingsWindow.qml")));
        m_settings.reset(qobject_cast<QWindow *>(component.create()));
        // A fault of the build, of which Qt has warned.
        if (!m_settings)
            return;
        connect(m_settings.get(), &QWindow::visibleChanged, this, &MainWindows::changed);
    }
    QMetaObject::invokeMethod(m_settings.get(), "open");
}

bool MainWindows::showsSettings() const
{
    return m_settings && m_settings->isVisible();
}
