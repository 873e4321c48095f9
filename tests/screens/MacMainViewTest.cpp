// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/ShownWindow.h"
#include "macOS/NavigationState.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QTest>
#include <QTimer>

using namespace std::chrono_literals;

class MacMainViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyStartOpensOnTheRecentList()
    {
        ShownWindow shown;
        QVERIFY2(shown.show(), qPrintable(shown.warnings().join(u'\n')));
        QCOMPARE(title(shown), QStringLiteral("Sismos"));
        QCOMPARE(shown.window().title(), QStringLiteral("Terremotos"));
    }

    void clickAndArrowsChangeTheSection()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        shown.click(shown.item(QStringLiteral("historico")));
        QCOMPARE(title(shown), QStringLiteral("Histórico"));
        shown.press(Qt::Key_Up);
        QCOMPARE(title(shown), QStringLiteral("Sismos"));
        shown.press(Qt::Key_Up);
        QCOMPARE(title(shown), QStringLiteral("Sismos"));
    }

    void theSameSectionAgainMakesNoNewScreen()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        const QPointer<QQuickItem> screen = shown.item(QStringLiteral("refreshButton"));
        shown.press(Qt::Key_1, Qt::ControlModifier);
        shown.click(shown.item(QStringLiteral("sismos")));
        QCOMPARE(shown.item(QStringLiteral("refreshButton")), screen.data());
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(1));
        shown.press(Qt::Key_2, Qt::ControlModifier);
        QVERIFY(!screen);
    }

    void selectionCanBeTakenAway_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("by Ctrl and a click") << false;
        QTest::newRow("by Ctrl and Space") << true;
    }

    void selectionCanBeTakenAway()
    {
        QFETCH(bool, byKey);
        ShownWindow shown;
        QVERIFY(shown.show());
        shown.click(shown.item(QStringLiteral("sismos")));
        if (byKey)
            shown.press(Qt::Key_Space, Qt::ControlModifier);
        else
            shown.click(shown.item(QStringLiteral("sismos")), Qt::ControlModifier);
        QVERIFY(!NavigationState::shared().sidebarSelection());
        QVERIFY(shown.named(QStringLiteral("Select a section")));
        QVERIFY(!shown.item(QStringLiteral("refreshButton")));
        shown.press(Qt::Key_Down);
        QCOMPARE(title(shown), QStringLiteral("Sismos"));
        // On another row Ctrl and a click select.
        shown.click(shown.item(QStringLiteral("stats")), Qt::ControlModifier);
        QCOMPARE(title(shown), QStringLiteral("Estadísticas"));
    }

    void sidebarComesAndGoes()
    {
        ShownWindow shown;
        shown.world.appearance.setReducedMotion(true);
        QVERIFY(shown.show());
        QVERIFY(!shown.item(QStringLiteral("sidebarButton")));
        shown.press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_VERIFY(!shown.item(QStringLiteral("sidebar")));
        QCOMPARE(shown.item(QStringLiteral("sidebarButton"))->mapToScene(QPointF()).x(), 12.0);
        // The menu's navigation does not bring it back.
        shown.press(Qt::Key_2, Qt::ControlModifier);
        QVERIFY(!shown.item(QStringLiteral("sidebar")));
        shown.click(shown.item(QStringLiteral("sidebarButton")));
        QTRY_VERIFY(shown.item(QStringLiteral("sidebar")));
        shown.world.notificationCenter.post(NotificationName::toggleSidebar);
        QTRY_VERIFY(!shown.item(QStringLiteral("sidebar")));
    }

    void narrowWindowFoldsTheSidebar()
    {
        ShownWindow shown;
        shown.world.appearance.setReducedMotion(true);
        QVERIFY(shown.show({480, 720}));
        QVERIFY(!shown.item(QStringLiteral("sidebar")));
        shown.click(shown.item(QStringLiteral("sidebarButton")));
        QTRY_VERIFY(shown.item(QStringLiteral("sidebar")));
        // It lies over the content, which keeps its place.
        QCOMPARE(shown.item(QStringLiteral("pageTitle"))->mapToScene(QPointF()).x(), 52.0);
        QTest::mouseClick(&shown.window(), Qt::LeftButton, Qt::NoModifier, QPoint(400, 400));
        QTRY_VERIFY(!shown.item(QStringLiteral("sidebar")));
        shown.press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_VERIFY(shown.item(QStringLiteral("sidebar")));
        shown.click(shown.item(QStringLiteral("historico")));
        QTRY_VERIFY(!shown.item(QStringLiteral("sidebar")));
        QCOMPARE(title(shown), QStringLiteral("Histórico"));
        shown.window().resize(900, 720);
        QTRY_VERIFY(shown.item(QStringLiteral("sidebar")));
    }

    void sidebarIsAsWideAsTheUserWantsAndTheContentAllows()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        const auto drag = [&](int from, int to) {
            QTest::mousePress(&shown.window(), Qt::LeftButton, Qt::NoModifier, QPoint(from, 400));
            for (int step = 1; step <= 10; ++step)
                QTest::mouseMove(&shown.window(), QPoint(from + (to - from) * step / 10, 400));
            QTest::mouseRelease(&shown.window(), Qt::LeftButton, Qt::NoModifier, QPoint(to, 400));
            shown.settle();
            return shown.item(QStringLiteral("sidebar"))->width();
        };
        QCOMPARE(drag(190, 20), 160.0);
        // 1100 less the 360 that the content keeps.
        QCOMPARE(drag(160, 1000), 740.0);
        shown.window().resize(700, 720);
        QTRY_COMPARE(shown.item(QStringLiteral("sidebar"))->width(), 340.0);
    }

    void sidebarFoldedByTheUserStaysFoldedInAWiderWindow()
    {
        ShownWindow shown;
        shown.world.appearance.setReducedMotion(true);
        QVERIFY(shown.show());
        shown.press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_VERIFY(!shown.item(QStringLiteral("sidebar")));
        shown.window().resize(480, 720);
        QTRY_COMPARE(shown.window().width(), 480);
        shown.window().resize(900, 720);
        QTRY_COMPARE(shown.window().width(), 900);
        shown.settle();
        QVERIFY(!shown.item(QStringLiteral("sidebar")));
    }

    void narrowSearchTakesTheWholeToolbar()
    {
        ShownWindow shown;
        QVERIFY(shown.show({480, 720}));
        QVERIFY(!shown.item(QStringLiteral("searchField")));
        shown.click(shown.named(QStringLiteral("Buscar por localización")));
        QQuickItem *field = shown.item(QStringLiteral("searchField"));
        QVERIFY(field && field->hasActiveFocus());
        QVERIFY(!shown.item(QStringLiteral("pageTitle")));
        shown.type(QStringLiteral("mazo"));
        shown.click(shown.named(QStringLiteral("Cancelar")));
        QVERIFY(!shown.item(QStringLiteral("searchField")));
        shown.press(Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(shown.item(QStringLiteral("searchField"))->property("text").toString(), QString());
    }

    void menuHoldsEveryCommandInOrder()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        shown.press(Qt::Key_F10);
        QCOMPARE(entries(shown),
                 QStringLiteral("Actualizar terremotos Ctrl+R|Mostrar/Ocultar barra lateral Ctrl+Shift+S|"
                                "Ajustes Ctrl+,|Navegar|Nueva ventana Ctrl+N|Acerca de Terremotos|Salir Ctrl+Q"));
        shown.click(shown.named(QStringLiteral("Navegar")));
        QTRY_VERIFY(entries(shown).endsWith(
            QStringLiteral("Sismos Ctrl+1|Histórico Ctrl+2|Mapa Ctrl+3|Estadísticas Ctrl+4|Información Ctrl+I|"
                           "Abrir filtros Ctrl+O")));
        QCOMPARE(faultsOfItems(shown.window()), QStringList());
        shown.click(entry(shown, QStringLiteral("Mapa")));
        QCOMPARE(title(shown), QStringLiteral("Mapa"));
        QTRY_COMPARE(entries(shown), QString());
    }

    void menuEntriesAnswerAReaderAndTheKeyboard()
    {
        ShownWindow shown;
        shown.world.appearance.setReducedMotion(true);
        QVERIFY(shown.show());
        shown.press(Qt::Key_F10);
        shown.press(Qt::Key_Down);
        shown.press(Qt::Key_Down);
        shown.press(Qt::Key_Return);
        QTRY_VERIFY(!shown.item(QStringLiteral("sidebar")));
        QTRY_COMPARE(entries(shown), QString());
        QVERIFY(isFocusInContent(shown));
        // With the sidebar hidden the menu still opens.
        shown.press(Qt::Key_F10);
        QVERIFY(entries(shown).startsWith(QStringLiteral("Actualizar")));
        shown.press(Qt::Key_Escape);
        QTRY_COMPARE(entries(shown), QString());
        shown.press(Qt::Key_F10);
        QAccessible::queryAccessibleInterface(entry(shown, QStringLiteral("Mostrar/Ocultar barra lateral")))
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::pressAction());
        QTRY_VERIFY(shown.item(QStringLiteral("sidebar")));
        QTRY_COMPARE(entries(shown), QString());
    }

    void refreshKeysReachTheRecentListOnly_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::newRow("Ctrl+R") << int(Qt::Key_R) << int(Qt::ControlModifier);
        QTest::newRow("F5") << int(Qt::Key_F5) << int(Qt::NoModifier);
    }

    void refreshKeysReachTheRecentListOnly()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        ShownWindow shown;
        QVERIFY(shown.show());
        shown.press(Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(2));
        shown.press(Qt::Key_4, Qt::ControlModifier);
        shown.press(Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(2));
    }

    void settingsWindowIsOne()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        QCOMPARE(settingsWindows().size(), 0);
        shown.click(shown.named(QStringLiteral("Ajustes")));
        QTRY_COMPARE(settingsWindows().size(), 1);
        QCOMPARE(settingsWindows().first()->size(), QSize(520, 480));
        QWindow *settings = settingsWindows().first();
        // Again: the same one, in front and not minimised.
        shown.window().requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(&shown.window()));
        settings->showMinimized();
        shown.world.notificationCenter.post(NotificationName::openSettings);
        QVERIFY(QTest::qWaitForWindowActive(settings));
        QCOMPARE(settings->visibility(), QWindow::Windowed);
        QCOMPARE(settingsWindows(), QWindowList{settings});
        settings->showMaximized();
        shown.world.notificationCenter.post(NotificationName::openSettings);
        shown.settle();
        QCOMPARE(settings->visibility(), QWindow::Maximized);
        QVERIFY(settings->close());
        QTRY_COMPARE(settingsWindows().size(), 0);
        shown.world.notificationCenter.post(NotificationName::openSettings);
        QTRY_COMPARE(settingsWindows().size(), 1);
    }

    void closedWindowAnswersTheMenuNoMore()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        shown.press(Qt::Key_Comma, Qt::ControlModifier);
        QTRY_COMPARE(settingsWindows().size(), 1);
        shown.window().close();
        settingsWindows().first()->hide();
        shown.world.notificationCenter.post(NotificationName::openSettings);
        shown.world.settle();
        QCOMPARE(settingsWindows().size(), 0);
    }

    void closedWindowRefreshesNoMore()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        shown.world.notificationCenter.post(NotificationName::openSettings);
        QTRY_COMPARE(settingsWindows().size(), 1);
        shown.window().close();
        shown.world.settle();
        shown.world.clock.advance(2h);
        shown.world.settle();
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(1));
    }

    void lastWindowClosedEndsTheProgram()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        QTimer::singleShot(0, &shown.window(), &QWindow::close);
        QTimer::singleShot(10s, qApp, [] { QCoreApplication::exit(EXIT_FAILURE); });
        QCOMPARE(QCoreApplication::exec(), EXIT_SUCCESS);
    }

    void aboutTellsVersionAndLicence()
    {
        QCoreApplication::setApplicationVersion(QStringLiteral("9.8.7"));
        ShownWindow shown;
        QVERIFY(shown.show());
        shown.press(Qt::Key_F10);
        shown.click(shown.named(QStringLiteral("Acerca de Terremotos")));
        QTRY_VERIFY(shown.named(QStringLiteral("Versión 9.8.7")));
        QCOMPARE(faultsOfItems(shown.window()), QStringList());
        shown.press(Qt::Key_Escape);
        QTRY_VERIFY(!shown.named(QStringLiteral("Versión 9.8.7")));
    }

private:
    static QString title(const ShownWindow &shown)
    {
        const QQuickItem *item = shown.item(QStringLiteral("pageTitle"));
        return item ? item->property("text").toString() : QString();
    }
    static bool isFocusInContent(const ShownWindow &shown)
    {
        const QQuickItem *item = shown.window().activeFocusItem();
        while (item && !item->inherits("QQuickStackView"))
            item = item->parentItem();
        return item;
    }
    static QQuickItem *entry(const ShownWindow &shown, const QString &text)
    {
        for (QQuickItem *item : shown.itemsOf("QQuickMenuItem"))
            if (item->property("text").toString() == text)
                return item;
        return nullptr;
    }
    /// The entries of all open menus, with their keys.
    static QString entries(const ShownWindow &shown)
    {
        QStringList texts;
        for (const QQuickItem *entry : shown.itemsOf("QQuickMenuItem"))
            texts.append(
                (entry->property("text").toString() + u' ' + entry->property("shortcutText").toString()).trimmed());
        return texts.join(u'|');
    }
    static QWindowList settingsWindows()
    {
        QWindowList windows;
        for (QWindow *window : QGuiApplication::allWindows())
            if (window->title() == QStringLiteral("Ajustes") && window->isVisible())
                windows.append(window);
        return windows;
    }
};

QTEST_MAIN(MacMainViewTest)
#include "MacMainViewTest.moc"
