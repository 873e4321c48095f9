// SPDX-License-Identifier: GPL-3.0-or-later
#include "orvaliaApp.h"

#include "Core/Persistence/PersistenceController.h"
#include "Platform/NotificationCenter/NotificationCenter.h"
#include "macOS/MainWindows.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QWindow>

#include <algorithm>

namespace {
const QString qmlFolder = QStringLiteral("qrc:/qt/qml");

/// Nobody sees or closes a window of the platforms that draw into memory alone.
bool hasScreen()
{
    return QGuiApplication::platformName() != QLatin1String("offscreen")
        && QGuiApplication::platformName() != QLatin1String("minimal");
}

/// Shows `message` until the user closes it.
void showFailure(const QString &message)
{
    if (!hasScreen())
        return;
    QQmlApplicationEngine engine;
    engine.addImportPath(qmlFolder);
    engine.setInitialProperties({{QStringLiteral("message"), message}});
    engine.load(QUrl(qmlFolder + QStringLiteral("/orvalia/Shell/FailureWindow.qml")));
    if (!engine.rootObjects().isEmpty())
        QGuiApplication::exec();
}

PersistenceController &openStore()
{
    PersistenceController::setFailureHandler(showFailure);
    return PersistenceController::shared();
}

void tellActivation(Qt::ApplicationState state)
{
    if (state == Qt::ApplicationActive)
        NotificationCenter::defaultCenter().post(NotificationName::appDidBecomeActive);
}
}

orvaliaApp::orvaliaApp(Root root)
    : m_root(root)
    , m_persistenceController(openStore())
{
    m_engine.addImportPath(qmlFolder);
    m_engine.setInitialProperties(
        {{QStringLiteral("container"), QVariant::fromValue(&m_persistenceController.container())}});
    connect(&m_engine, &QQmlApplicationEngine::objectCreated, this, [this](QObject *made) {
        if (const auto *window = qobject_cast<QWindow *>(made))
            connect(window, &QWindow::visibleChanged, this, &orvaliaApp::dropClosedWindows);
    });
    openMainWindow();
    connect(qApp, &QGuiApplication::applicationStateChanged, this, tellActivation);
    connect(&MainWindows::shared(), &MainWindows::newWindowWanted, this, &orvaliaApp::openMainWindow);
}

orvaliaApp::~orvaliaApp()
{
    // The engine ends its windows one by one, and each that hides would have the ended ones looked through.
    for (QObject *object : m_engine.rootObjects())
        object->disconnect(this);
}

int orvaliaApp::run()
{
    return m_engine.rootObjects().isEmpty() ? EXIT_FAILURE : QGuiApplication::exec();
}

void orvaliaApp::showPermissions()
{
    if (!m_permissionsWindow) {
        QQmlComponent component(&m_engine, QUrl(qmlFolder + QStringLiteral("/orvalia/Ajustes/PermissionsWindow.qml")));
        m_permissionsWindow.reset(component.create());
        // A fault of the build, of which Qt has warned.
        if (!m_permissionsWindow)
            return;
    }
    QMetaObject::invokeMethod(m_permissionsWindow.get(), "open");
}

void orvaliaApp::comeToFront()
{
    const QList<QWindow *> windows = mainWindows();
    if (windows.isEmpty())
        return openMainWindow();
    auto used = windows.end();
    // What is known of a window's use is a screen within it.
    for (const QObject *part = MainWindows::shared().front(); part && used == windows.end(); part = part->parent())
        used = std::find(windows.begin(), windows.end(), part);
    QWindow *const front = used == windows.end() ? windows.last() : *used;
    front->setWindowStates(front->windowStates() & ~Qt::WindowMinimized);
    front->raise();
    front->requestActivate();
}

void orvaliaApp::openMainWindow()
{
    const QString file = m_root == Root::desktop ? QStringLiteral("/orvalia/Shell/MacMainView.qml")
                                                 : QStringLiteral("/orvalia/Tabs/MainTabView.qml");
    m_engine.load(QUrl(qmlFolder + file));
    dropClosedWindows();
}

QList<QWindow *> orvaliaApp::mainWindows() const
{
    QList<QWindow *> open;
    for (QObject *object : m_engine.rootObjects())
        if (auto *window = qobject_cast<QWindow *>(object); window && window->isVisible())
            open.append(window);
    return open;
}

void orvaliaApp::dropClosedWindows()
{
    // The last one keeps the settings window alive, which the user may still have open.
    if (mainWindows().isEmpty())
        return;
    for (QObject *object : m_engine.rootObjects())
        if (const auto *window = qobject_cast<QWindow *>(object); window && !window->isVisible())
            object->deleteLater();
}
