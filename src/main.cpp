// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Session/FirstInstance.h"
#include "Platform/Support/DesktopPlatform.h"
#include "orvaliaApp.h"

#include <QDBusConnection>
#include <QGuiApplication>

int main(int argc, char *argv[])
{
    const QString programId = QStringLiteral(ORVALIA_ID);
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("orvalia"));
    QGuiApplication::setApplicationVersion(QStringLiteral(ORVALIA_VERSION));
    QGuiApplication::setDesktopFileName(programId);

    const FirstInstance instance(QDBusConnection::sessionBus(), programId);
    if (instance.handsOver())
        return EXIT_SUCCESS;

    DesktopPlatform desktop(programId, DesktopPlatform::Files::standard());
    orvaliaApp app;
    QObject::connect(&desktop.workspace(), &DesktopWorkspace::permissionsRequested, &app, &orvaliaApp::showPermissions);
    QObject::connect(&instance, &FirstInstance::startedAgain, &app, &orvaliaApp::comeToFront);
    return app.run();
}
