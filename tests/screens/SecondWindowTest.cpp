// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/ShownWindow.h"

#include <QGuiApplication>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class SecondWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void guardsOfOneDoNotBindTheOther()
    {
        ShownWindow shown;
        shown.world.urlSession.holdsAnswers = true;
        QVERIFY(shown.show());
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(1));
        QQuickWindow &first = shown.window();
        // The other's refresh starts while the first one's is under way.
        QVERIFY(shown.showAnother());
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(2));
        shown.world.urlSession.holdsAnswers = false;
        shown.world.urlSession.release();
        shown.world.urlSession.release();
        shown.settle();
        // A refresh by hand binds the window of the hand for a while, and no other.
        for (const size_t requests : {3, 3}) {
            shown.click(shown.item("refreshButton"));
            QCOMPARE(shown.world.urlSession.requests.size(), requests);
        }
        shown.lookAt(first);
        shown.click(shown.item("refreshButton"));
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(4));
    }

    void menuReachesEveryWindow()
    {
        ShownWindow shown;
        shown.world.appearance.setReducedMotion(true);
        QVERIFY(shown.show());
        QQuickWindow &first = shown.window();
        QVERIFY(shown.showAnother());
        const size_t before = shown.world.urlSession.requests.size();
        shown.press(Qt::Key_R, Qt::ControlModifier);
        QCOMPARE(shown.world.urlSession.requests.size(), before + 2);
        shown.press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
        shown.press(Qt::Key_2, Qt::ControlModifier);
        shown.press(Qt::Key_I, Qt::ControlModifier);
        for (QQuickWindow *window : {&shown.window(), &first}) {
            shown.lookAt(*window);
            QTRY_VERIFY(!shown.item("sidebar"));
            QCOMPARE(shown.textOf("pageTitle"), u"Histórico"_s);
            QVERIFY(shown.named("Cerrar"));
        }
    }

    void settingsWindowIsOneForAll()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        QQuickWindow &first = shown.window();
        QVERIFY(shown.showAnother());
        const auto openSettings = [&shown] { shown.world.notificationCenter.post(NotificationName::openSettings); };
        QCOMPARE(windows(u"Ajustes"_s), QWindowList());
        openSettings();
        QTRY_COMPARE(windows(u"Ajustes"_s).size(), 1);
        QWindow *settings = windows(u"Ajustes"_s).first();
        QCOMPARE(settings->size(), QSize(520, 480));
        // Again: the same one, in front and not minimised.
        shown.window().requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(&shown.window()));
        settings->showMinimized();
        openSettings();
        QVERIFY(QTest::qWaitForWindowActive(settings));
        QCOMPARE(settings->visibility(), QWindow::Windowed);
        QCOMPARE(windows(u"Ajustes"_s), QWindowList{settings});
        QVERIFY(settings->close());
        openSettings();
        QTRY_COMPARE(windows(u"Ajustes"_s), QWindowList{settings});
        // It outlives the main windows, which rest once they are closed.
        shown.window().close();
        first.close();
        settings->hide();
        openSettings();
        shown.world.settle();
        shown.world.clock.advance(2h);
        shown.world.settle();
        QCOMPARE(windows(u"Ajustes"_s), QWindowList());
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(2));
    }

    void questionIsPutOnceWhereTheUserIs()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        QQuickWindow &first = shown.window();
        QVERIFY(shown.showAnother());
        QQuickWindow &second = shown.window();
        shown.world.permissions.request(Permissions::Subject::notifications);
        QTRY_COMPARE(asking(shown, {&first, &second}), QList<QQuickWindow *>{&second});
        first.requestActivate();
        QTRY_COMPARE(asking(shown, {&first, &second}), QList<QQuickWindow *>{&first});
        first.close();
        QTRY_COMPARE(asking(shown, {&first, &second}), QList<QQuickWindow *>{&second});
    }

private:
    /// Those of the windows in which the question shows.
    static QList<QQuickWindow *> asking(ShownWindow &shown, QList<QQuickWindow *> windows)
    {
        shown.world.settle();
        windows.removeIf([&shown](QQuickWindow *window) {
            shown.lookAt(*window);
            return !window->isVisible() || !shown.named("Permitir");
        });
        return windows;
    }
    /// The windows with this title that show.
    static QWindowList windows(const QString &title)
    {
        QWindowList shown = QGuiApplication::allWindows();
        shown.removeIf([&](const QWindow *window) { return !window->isVisible() || window->title() != title; });
        return shown;
    }
};

QTEST_MAIN(SecondWindowTest)
#include "SecondWindowTest.moc"
