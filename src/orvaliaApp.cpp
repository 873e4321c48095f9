// SPDX-License-Identifier: GPL-3.0-or-later
#include "orvaliaApp.h"

#include "Core/Persistence/PersistenceController.h"
#include "Platform/NotificationCenter/NotificationCenter.h"

#include <QGuiApplication>
#include <QQmlComponent>

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

orvaliaApp::orvaliaApp()
    : m_persistenceController(openStore())
{
    m_engine.addImportPath(qmlFolder);
    m_engine.setInitialProperties(
        {{QStringLiteral("container"), QVariant::fromValue(&m_persistenceController.container())}});
    m_engine.load(QUrl(qmlFolder + QStringLiteral("/orvalia/Shell/MacMainView.qml")));
    connect(qApp, &QGuiApplication::applicationStateChanged, this, tellActivation);
}

orvaliaApp::~orvaliaApp() = default;

int orvaliaApp::run()
{
    return m_engine.rootObjects().isEmpty() ? EXIT_FAILURE : QGuiApplication::exec();
}

void orvaliaApp::showPermissions()
{
    if (!m_permissionsWindow) {
        QQmlComponent component(&m_engine, QUrl(qmlFolder + QStringLiteral("/orvalia/Ajustes/PermissionsWindow.qml")));
        m_permissionsWindow.reset(component.create());
    }
    QMetaObject::invokeMethod(m_permissionsWindow.get(), "open");
}
