// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/ShownWindow.h"
#include "Support/Table.h"
#include "macOS/NavigationState.h"

#include <QGuiApplication>
#include <QTest>
#include <QTimer>

using namespace std::chrono_literals;

class MacMainViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void clickAndArrowsChangeTheSection()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        QCOMPARE(shown.window().title(), QStringLiteral("Terremotos"));
        QCOMPARE(shown.textOf("pageTitle"), QStringLiteral("Sismos"));
        shown.click(shown.item("historico"));
        QCOMPARE(shown.textOf("pageTitle"), QStringLiteral("Histórico"));
        shown.press(Qt::Key_Up);
        QCOMPARE(shown.textOf("pageTitle"), QStringLiteral("Sismos"));
        shown.press(Qt::Key_Up);
        QCOMPARE(shown.textOf("pageTitle"), QStringLiteral("Sismos"));
    }

    void theSameSectionAgainMakesNoNewScreen()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        const QPointer<QQuickItem> screen = shown.item("refreshButton");
        shown.press(Qt::Key_1, Qt::ControlModifier);
        shown.click(shown.item("sismos"));
        QCOMPARE(shown.item("refreshButton"), screen.data());
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(1));
        shown.press(Qt::Key_2, Qt::ControlModifier);
        QVERIFY(!screen);
    }

    void selectionCanBeTakenAway()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        shown.click(shown.item("sismos"));
        shown.click(shown.item("sismos"), Qt::ControlModifier);
        QVERIFY(!NavigationState::shared().sidebarSelection());
        QVERIFY(shown.named("Select a section"));
        QVERIFY(!shown.item("refreshButton"));
        shown.press(Qt::Key_Down);
        QCOMPARE(shown.textOf("pageTitle"), QStringLiteral("Sismos"));
        shown.press(Qt::Key_Space, Qt::ControlModifier);
        QVERIFY(!NavigationState::shared().sidebarSelection());
        // On another row Ctrl and a click select.
        shown.click(shown.item("stats"), Qt::ControlModifier);
        QCOMPARE(shown.textOf("pageTitle"), QStringLiteral("Estadísticas"));
    }

    void sidebarComesAndGoes()
    {
        ShownWindow shown;
        shown.world.appearance.setReducedMotion(true);
        QVERIFY(shown.show());
        QVERIFY(!shown.item("sidebarButton"));
        shown.press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_VERIFY(!shown.item("sidebar"));
        QCOMPARE(shown.item("sidebarButton")->mapToScene(QPointF()).x(), 12.0);
        // The menu's navigation does not bring it back.
        shown.press(Qt::Key_2, Qt::ControlModifier);
        QVERIFY(!shown.item("sidebar"));
        shown.click(shown.item("sidebarButton"));
        QTRY_VERIFY(shown.item("sidebar"));
        shown.world.notificationCenter.post(NotificationName::toggleSidebar);
        QTRY_VERIFY(!shown.item("sidebar"));
    }

    void narrowWindowFoldsTheSidebar()
    {
        ShownWindow shown;
        shown.world.appearance.setReducedMotion(true);
        QVERIFY(shown.show({480, 720}));
        QVERIFY(!shown.item("sidebar"));
        shown.click(shown.item("sidebarButton"));
        QTRY_VERIFY(shown.item("sidebar"));
        // It lies over the content, which keeps its place.
        QCOMPARE(shown.item("pageTitle")->mapToScene(QPointF()).x(), 52.0);
        QTest::mouseClick(&shown.window(), Qt::LeftButton, Qt::NoModifier, QPoint(400, 400));
        QTRY_VERIFY(!shown.item("sidebar"));
        shown.press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_VERIFY(shown.item("sidebar"));
        shown.click(shown.item("historico"));
        QTRY_VERIFY(!shown.item("sidebar"));
        QCOMPARE(shown.textOf("pageTitle"), QStringLiteral("Histórico"));
        shown.window().resize(900, 720);
        QTRY_VERIFY(shown.item("sidebar"));
    }

    void sidebarIsAsWideAsTheUserWantsAndTheContentAllows()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        const auto drag = [&](int from, int to) {
            shown.drag({from, 400}, {to - from, 0});
            return shown.item("sidebar")->width();
        };
        QCOMPARE(drag(190, 20), 160.0);
        // 1100 less the 360 that the content keeps.
        QCOMPARE(drag(160, 1000), 740.0);
        shown.window().resize(700, 720);
        QTRY_COMPARE(shown.item("sidebar")->width(), 340.0);
    }

    void sidebarFoldedByTheUserStaysFoldedInAWiderWindow()
    {
        ShownWindow shown;
        shown.world.appearance.setReducedMotion(true);
        QVERIFY(shown.show());
        shown.press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_VERIFY(!shown.item("sidebar"));
        shown.window().resize(480, 720);
        QTRY_COMPARE(shown.window().width(), 480);
        shown.window().resize(900, 720);
        QTRY_COMPARE(shown.window().width(), 900);
        shown.settle();
        QVERIFY(!shown.item("sidebar"));
    }

    void narrowSearchTakesTheWholeToolbar()
    {
        ShownWindow shown;
        QVERIFY(shown.show({480, 720}));
        QVERIFY(!shown.item("searchField"));
        shown.click(shown.named("Buscar por localización"));
        QQuickItem *field = shown.item("searchField");
        QVERIFY(field && field->hasActiveFocus());
        QVERIFY(!shown.item("pageTitle"));
        shown.type("mazo");
        shown.click(shown.named("Cancelar"));
        QVERIFY(!shown.item("searchField"));
        shown.press(Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(shown.item("searchField")->property("text").toString(), QString());
    }

    void menuHoldsEveryCommandInOrder()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        shown.press(Qt::Key_F10);
        QCOMPARE(entries(shown),
                 QStringLiteral("Actualizar terremotos Ctrl+R|Mostrar/Ocultar barra lateral Ctrl+Shift+S|"
                                "Ajustes Ctrl+,|Navegar|Nueva ventana Ctrl+N|Acerca de Terremotos|Salir Ctrl+Q"));
        shown.click(shown.named("Navegar"));
        QTRY_VERIFY(entries(shown).endsWith(
            QStringLiteral("Sismos Ctrl+1|Histórico Ctrl+2|Mapa Ctrl+3|Estadísticas Ctrl+4|Información Ctrl+I|"
                           "Abrir filtros Ctrl+O")));
        QCOMPARE(faultsOfItems(shown.window()), QStringList());
        shown.click(entry(shown, QStringLiteral("Mapa")));
        QCOMPARE(shown.textOf("pageTitle"), QStringLiteral("Mapa"));
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
        QTRY_VERIFY(!shown.item("sidebar"));
        QTRY_COMPARE(entries(shown), QString());
        QVERIFY(isFocusInContent(shown));
        // With the sidebar hidden the menu still opens.
        shown.press(Qt::Key_F10);
        QVERIFY(entries(shown).startsWith(QStringLiteral("Actualizar")));
        shown.press(Qt::Key_Escape);
        QTRY_COMPARE(entries(shown), QString());
        shown.press(Qt::Key_F10);
        shown.pressByReader(entry(shown, QStringLiteral("Mostrar/Ocultar barra lateral")));
        QTRY_VERIFY(shown.item("sidebar"));
        QTRY_COMPARE(entries(shown), QString());
    }

    void refreshKeysReachTheRecentListOnly_data()
    {
        Table<Qt::Key, Qt::KeyboardModifiers> row;
        row("Ctrl+R", Qt::Key_R, Qt::ControlModifier);
        row("F5", Qt::Key_F5, Qt::NoModifier);
    }

    void refreshKeysReachTheRecentListOnly()
    {
        const auto [key, modifiers] = Table<Qt::Key, Qt::KeyboardModifiers>::current();
        ShownWindow shown;
        QVERIFY(shown.show());
        shown.press(key, modifiers);
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(2));
        shown.press(Qt::Key_4, Qt::ControlModifier);
        shown.press(key, modifiers);
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(2));
    }

    void settingsWindowIsOne()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        QCOMPARE(settingsWindows().size(), 0);
        shown.click(shown.named("Ajustes"));
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

    void closedWindowRestsForGood()
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
        shown.click(shown.named("Acerca de Terremotos"));
        QTRY_VERIFY(shown.named("Versión 9.8.7"));
        QCOMPARE(faultsOfItems(shown.window()), QStringList());
        shown.press(Qt::Key_Escape);
        QTRY_VERIFY(!shown.named("Versión 9.8.7"));
    }

private:
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
