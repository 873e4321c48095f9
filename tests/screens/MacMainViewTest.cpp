// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/ShownWindow.h"
#include "macOS/NavigationState.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class MacMainViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pointerAndKeysChangeTheSection()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        QCOMPARE(shown.window().title(), u"Terremotos"_s);
        QCOMPARE(shown.textOf("pageTitle"), u"Sismos"_s);
        QVERIFY2(!shown.world.locationService, "made before the settings open");
        // The same section again makes no new screen.
        const QPointer<QQuickItem> screen = shown.item("refreshButton");
        shown.press(Qt::Key_1, Qt::ControlModifier);
        shown.click(shown.item("sismos"));
        shown.press(Qt::Key_Up);
        QCOMPARE(shown.item("refreshButton"), screen.data());
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(1));
        shown.press(Qt::Key_Down);
        QCOMPARE(shown.textOf("pageTitle"), u"Histórico"_s);
        QVERIFY(!screen);
        shown.click(shown.item("sismos"));
        QCOMPARE(shown.textOf("pageTitle"), u"Sismos"_s);
        // The selection can be taken away.
        shown.click(shown.item("sismos"), Qt::ControlModifier);
        QVERIFY(!NavigationState::shared().sidebarSelection());
        QVERIFY(shown.named("Select a section"));
        QVERIFY(!shown.item("refreshButton"));
        shown.press(Qt::Key_Down);
        QCOMPARE(shown.textOf("pageTitle"), u"Sismos"_s);
        shown.press(Qt::Key_Space, Qt::ControlModifier);
        QVERIFY(!NavigationState::shared().sidebarSelection());
        // On another row Ctrl and a click select.
        shown.click(shown.item("stats"), Qt::ControlModifier);
        QCOMPARE(shown.textOf("pageTitle"), u"Estadísticas"_s);
    }

    void sidebarIsAsTheUserWantsAndTheContentAllows()
    {
        ShownWindow shown;
        shown.world.appearance.setReducedMotion(true);
        QVERIFY(shown.show());
        const auto drag = [&](int from, int to) {
            shown.drag({from, 400}, {to - from, 0});
            return shown.item("sidebar")->width();
        };
        QCOMPARE(drag(190, 20), 160.0);
        shown.named("Ancho de la barra lateral")->forceActiveFocus(Qt::TabFocusReason);
        for (const auto &[key, width] :
             {std::pair(Qt::Key_Right, 170.0), {Qt::Key_Left, 160.0}, {Qt::Key_Left, 160.0}}) {
            shown.press(key);
            QCOMPARE(shown.item("sidebar")->width(), width);
        }
        // 1100 less the 360 that the content keeps.
        QCOMPARE(drag(160, 1000), 740.0);
        shown.window().resize(700, 720);
        QTRY_COMPARE(shown.item("sidebar")->width(), 340.0);

        QVERIFY(!shown.item("sidebarButton"));
        shown.press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_VERIFY(!shown.item("sidebar"));
        QCOMPARE(shown.item("sidebarButton")->mapToScene(QPointF()).x(), 12.0);
        // Neither the menu's navigation nor another width brings it back.
        shown.press(Qt::Key_2, Qt::ControlModifier);
        QVERIFY(!shown.item("sidebar"));
        for (const int width : {480, 900}) {
            shown.window().resize(width, 720);
            QTRY_COMPARE(shown.window().width(), width);
            shown.settle();
            QVERIFY(!shown.item("sidebar"));
        }
        shown.click(shown.item("sidebarButton"));
        QTRY_VERIFY(shown.item("sidebar"));
    }

    void narrowWindowFoldsTheSidebarAndTheSearch()
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
        QCOMPARE(shown.textOf("pageTitle"), u"Histórico"_s);
        // The search takes the whole toolbar.
        QVERIFY(!shown.item("searchField"));
        shown.click(shown.named("Buscar por localización"));
        const QQuickItem *field = shown.item("searchField");
        QVERIFY(field && field->hasActiveFocus());
        QVERIFY(!shown.item("pageTitle"));
        shown.type("mazo");
        shown.click(shown.named("Cancelar"));
        QVERIFY(!shown.item("searchField"));
        shown.press(Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(shown.textOf("searchField"), u""_s);
        shown.window().resize(900, 720);
        QTRY_VERIFY(shown.item("sidebar"));
    }

    void menuHoldsEveryCommandInOrder()
    {
        QCoreApplication::setApplicationVersion(u"9.8.7"_s);
        ShownWindow shown;
        QVERIFY(shown.show());
        shown.press(Qt::Key_F10);
        QCOMPARE(entries(shown),
                 u"Actualizar terremotos Ctrl+R|Mostrar/Ocultar barra lateral Ctrl+Shift+S|"
                 "Ajustes Ctrl+,|Navegar|Nueva ventana Ctrl+N|Acerca de Terremotos|Salir Ctrl+Q"_s);
        shown.click(shown.named("Navegar"));
        QTRY_VERIFY(entries(shown).endsWith(
            u"Sismos Ctrl+1|Histórico Ctrl+2|Mapa Ctrl+3|Estadísticas Ctrl+4|Información Ctrl+I|Abrir filtros Ctrl+O"_s));
        QCOMPARE(faultsOfItems(shown.window()), QStringList());
        shown.click(shown.itemsOf("QQuickMenuItem").at(9));
        QCOMPARE(shown.textOf("pageTitle"), u"Mapa"_s);
        QTRY_COMPARE(entries(shown), QString());
        // With the sidebar hidden it still opens.
        shown.press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
        shown.press(Qt::Key_F10);
        shown.pressByReader(shown.named("Acerca de Terremotos"));
        QTRY_VERIFY(shown.named("Versión 9.8.7"));
        QTRY_COMPARE(entries(shown), QString());
        QCOMPARE(faultsOfItems(shown.window()), QStringList());
        shown.press(Qt::Key_Escape);
        QTRY_VERIFY(!shown.named("Versión 9.8.7"));
    }

    void refreshKeysReachTheRecentListOnly()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        const auto requestsAfterBoth = [&shown] {
            for (const QKeyCombination key : {Qt::CTRL | Qt::Key_R, QKeyCombination(Qt::Key_F5)}) {
                shown.press(key.key(), key.keyboardModifiers());
                // One more within the minute would count for nothing.
                shown.pass(60s);
            }
            return shown.world.urlSession.requests.size();
        };
        QCOMPARE(requestsAfterBoth(), size_t(3));
        shown.press(Qt::Key_4, Qt::ControlModifier);
        QCOMPARE(requestsAfterBoth(), size_t(3));
    }

private:
    /// The entries of all open menus, with their keys.
    static QString entries(const ShownWindow &shown)
    {
        QStringList texts;
        for (const QQuickItem *entry : shown.itemsOf("QQuickMenuItem"))
            texts.append(
                (entry->property("text").toString() + u' ' + entry->property("shortcutText").toString()).trimmed());
        return texts.join(u'|');
    }
};

QTEST_MAIN(MacMainViewTest)
#include "MacMainViewTest.moc"
