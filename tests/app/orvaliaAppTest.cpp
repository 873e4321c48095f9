// SPDX-License-Identifier: GPL-3.0-or-later
#include "orvaliaApp.h"
#include "Core/Persistence/ModelContext.h"
#include "Core/Persistence/PersistenceController.h"
#include "PageGenerator.h"
#include "Support/World.h"
#include "macOS/MainWindows.h"

#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

class orvaliaAppTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void mainWindowHearsOfActivationAndItsClosingEndsTheProgram()
    {
        World world;
        orvaliaApp app;
        const QWindowList shown = shownWindows();
        QCOMPARE(shown.size(), 1);
        QCOMPARE(shown.first()->size(), QSize(1100, 720));
        // Of the program's states its activation alone is posted.
        const QSignalSpy posted(&world.notificationCenter, &NotificationCenter::posted);
        for (const Qt::ApplicationState state :
             {Qt::ApplicationInactive, Qt::ApplicationHidden, Qt::ApplicationSuspended, Qt::ApplicationActive})
            Q_EMIT qGuiApp->applicationStateChanged(state);
        QCOMPARE(posted.count(), 1);
        QCOMPARE(posted.first().first().toString(), QStringLiteral("appDidBecomeActive"));
        QMetaObject::invokeMethod(shown.first(), "close", Qt::QueuedConnection);
        QCOMPARE(app.run(), 0);
    }

    void keyOpensOneMoreMainWindowWhichGoesWhenClosed()
    {
        World world;
        world.urlSession.enqueue(PageGenerator::page(PageGenerator(3).ordinary(4, world.clock.now())));
        world.urlSession.holdsAnswers = true;
        const orvaliaApp app;
        const QPointer<QWindow> first = shownWindows().first();
        first->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(first));
        QTest::keyClick(first, Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(shownWindows().size(), 2);
        world.settle();
        QCOMPARE(world.urlSession.requests.size(), 2U);
        first->close();
        QTRY_VERIFY(!first);
        QCOMPARE(shownWindows().size(), 1);
        // What it was fetching comes all the same.
        world.urlSession.release();
        world.settle();
        QCOMPARE(PersistenceController::shared().container().mainContext().fetchCount({}), 4);
    }

    void secondStartShowsTheWindowThatThereIsOrANewOne()
    {
        World world;
        orvaliaApp app;
        QPointer<QWindow> window = shownWindows().first();
        window->showMinimized();
        app.comeToFront();
        QCOMPARE(shownWindows(), QWindowList{window});
        QVERIFY(!window->windowStates().testFlag(Qt::WindowMinimized));
        QTRY_VERIFY(window->isActive());
        // Of several the one used last, even if another program is in use now.
        Q_EMIT MainWindows::shared().newWindowWanted();
        QWindowList others = shownWindows();
        QVERIFY(others.removeOne(window.data()));
        window->requestActivate();
        QTRY_VERIFY(window->isActive());
        QWindow other;
        other.show();
        other.requestActivate();
        QTRY_VERIFY(other.isActive());
        app.comeToFront();
        QTRY_VERIFY(window->isActive());
        other.close();
        others.first()->close();
        window->close();
        QVERIFY(shownWindows().isEmpty());
        app.comeToFront();
        QCOMPARE(shownWindows().size(), 1);
        QTRY_VERIFY(!window);
    }

private:
    static QWindowList shownWindows()
    {
        QWindowList shown = QGuiApplication::topLevelWindows();
        shown.removeIf([](const QWindow *window) { return !window->isVisible(); });
        return shown;
    }
};

QTEST_MAIN(orvaliaAppTest)
#include "orvaliaAppTest.moc"
