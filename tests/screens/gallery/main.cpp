// SPDX-License-Identifier: GPL-3.0-or-later
// controls_gallery FOLDER: writes pictures of every control, light and dark, into FOLDER. QT_SCALE_FACTOR=2 doubles
// them.
#include "Support/World.h"

#include <QDir>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>

namespace {
/// Opens the popup of this name, or gives the control of this name the focus; takes the picture; closes it again.
bool takePicture(QQuickView &view, const char *subject, const QString &path)
{
    auto *popup = view.rootObject()->findChild<QObject *>(QLatin1String(subject));
    if (auto *control = qobject_cast<QQuickItem *>(popup))
        control->forceActiveFocus(Qt::TabFocusReason);
    else
        QMetaObject::invokeMethod(popup, popup->metaObject()->indexOfMethod("show()") >= 0 ? "show" : "open");
    QTest::qWait(400);
    const bool isSaved = view.grabWindow().save(path);
    QMetaObject::invokeMethod(popup, "close");
    QTest::qWait(300);
    return isSaved;
}
}

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    const QDir folder(application.arguments().value(1, QStringLiteral(".")));
    World world;
    QQuickView view;
    view.engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
    view.setSource(QUrl(QStringLiteral("qrc:/qt/qml/orvalia/Gallery/Gallery.qml")));
    view.show();
    if (!view.rootObject() || !QTest::qWaitForWindowActive(&view))
        return 1;
    for (const auto scheme : {Appearance::ColorScheme::light, Appearance::ColorScheme::dark}) {
        world.appearance.setColorScheme(scheme);
        const bool isDark = scheme == Appearance::ColorScheme::dark;
        for (const char *subject : {"search", "focused", "menu", "calendar", "sheet", "question"}) {
            const QString name =
                QStringLiteral("%1-%2.png").arg(QLatin1String(subject), QLatin1String(isDark ? "dark" : "light"));
            if (!takePicture(view, subject, folder.filePath(name)))
                return 1;
        }
    }
    return 0;
}
