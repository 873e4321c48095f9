// SPDX-License-Identifier: GPL-3.0-or-later
#include "orvaliaApp.h"
#include "Support/World.h"

#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

class orvaliaAppTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void mainWindowShowsAndItsClosingEndsTheProgram()
    {
        World world;
        orvaliaApp app;
        QWindowList shown = QGuiApplication::topLevelWindows();
        shown.removeIf([](const QWindow *window) { return !window->isVisible(); });
        QCOMPARE(shown.size(), 1);
        QCOMPARE(shown.first()->size(), QSize(1100, 720));
        QMetaObject::invokeMethod(shown.first(), "close", Qt::QueuedConnection);
        QCOMPARE(app.run(), 0);
    }

    void activationIsPostedAndNothingElseIs()
    {
        World world;
        const orvaliaApp app;
        const QSignalSpy posted(&world.notificationCenter, &NotificationCenter::posted);
        for (const Qt::ApplicationState state :
             {Qt::ApplicationInactive, Qt::ApplicationHidden, Qt::ApplicationSuspended})
            Q_EMIT qGuiApp->applicationStateChanged(state);
        QVERIFY(posted.isEmpty());
        Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive);
        QCOMPARE(posted.count(), 1);
        QCOMPARE(posted.first().first().toString(), QStringLiteral("appDidBecomeActive"));
    }
};

QTEST_MAIN(orvaliaAppTest)
#include "orvaliaAppTest.moc"
