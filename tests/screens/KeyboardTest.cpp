// SPDX-License-Identifier: GPL-3.0-or-later
#include "PageGenerator.h"
#include "Support/ShownItems.h"
#include "Support/ShownWindow.h"
#include "Support/Table.h"
#include "macOS/NavigationState.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {
constexpr QSize wide(1100, 720);
constexpr QSize narrow(480, 720);

/// The main window over a few events.
struct Window : ShownWindow
{
    bool open(QSize size)
    {
        world.appearance.setReducedMotion(true);
        enqueuePage(PageGenerator(5).ordinary(20, world.clock.now()));
        return show(size);
    }

    /// What the keyboard's focus is at: a stop of the Tab key, by its accessible name.
    QString stop() const
    {
        QQuickItem *item = window().activeFocusItem();
        while (item && !item->activeFocusOnTab())
            item = item->parentItem();
        return item ? ShownItems::spokenName(item) : QString();
    }

    bool isFocusInSidebar() const { return item("sidebar") && item("sidebar")->hasActiveFocus(); }
};
}

/// The main window without a pointer.
class KeyboardTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tabGoesFromTheSidebarOverTheToolbarToTheContent_data()
    {
        Table<QSize, QString> row;
        row("wide", wide,
            "Terremotos|Ajustes|Información|Ancho de la barra lateral|Actualizar terremotos|Abrir filtros|"
            "Buscar por localización|Sismos|Menú principal|Mostrar/Ocultar barra lateral|Terremotos");
        row("narrow, the sidebar folded", narrow,
            "Sismos|Mostrar/Ocultar barra lateral|Actualizar terremotos|Abrir filtros|Buscar por localización|Sismos");
    }

    void tabGoesFromTheSidebarOverTheToolbarToTheContent()
    {
        const auto [size, stops] = Table<QSize, QString>::current();
        Window shown;
        QVERIFY(shown.open(size));
        QStringList seen{shown.stop()};
        while (seen.size() < stops.count(u'|') + 1) {
            shown.press(Qt::Key_Tab);
            seen.append(shown.stop());
        }
        QCOMPARE(seen.join(u'|'), stops);
    }

    void slidingSidebarTakesTheFocusUntilASectionIsChosen_data()
    {
        Table<int, QString> row;
        row("Enter", Qt::Key_Return, "Histórico");
        row("Space", Qt::Key_Space, "Histórico");
        row("Escape", Qt::Key_Escape, "Histórico");
        row("a reader's press", 0, "Mapa");
    }

    void slidingSidebarTakesTheFocusUntilASectionIsChosen()
    {
        const auto [key, section] = Table<int, QString>::current();
        Window shown;
        QVERIFY(shown.open(narrow));
        shown.press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(shown.isFocusInSidebar());
        shown.press(Qt::Key_Down);
        QCOMPARE(NavigationState::shared().selectedId(), u"historico"_s);
        QVERIFY(shown.isFocusInSidebar());
        if (key)
            shown.press(Qt::Key(key));
        else
            shown.pressByReader(shown.item("mapa"));
        QTRY_VERIFY(!shown.item("sidebar"));
        QCOMPARE(shown.stop(), section);
    }

    void focusIsInTheContentOnceTheSidebarIsHidden()
    {
        Window shown;
        QVERIFY(shown.open(wide));
        QVERIFY(shown.isFocusInSidebar());
        // By the menu's second entry.
        for (const Qt::Key key : {Qt::Key_F10, Qt::Key_Down, Qt::Key_Down, Qt::Key_Return})
            shown.press(key);
        QTRY_COMPARE(shown.stop(), u"Sismos"_s);
        // It stays there when the section changes.
        for (const auto &[key, section] :
             {std::pair(Qt::Key_4, u"Estadísticas"_s), {Qt::Key_3, u"Mapa"_s}, {Qt::Key_2, u"Histórico"_s}}) {
            shown.press(key, Qt::ControlModifier);
            QCOMPARE(shown.stop(), section);
        }
    }

    void listWithoutAChosenRowShowsTheFocusItself()
    {
        Window shown;
        QVERIFY(shown.open(wide));
        QQuickItem *list = shown.item("earthquakeList");
        while (!list->hasActiveFocus())
            shown.press(Qt::Key_Tab);
        QTRY_VERIFY(shown.item("listFocus"));
        shown.press(Qt::Key_Down);
        QTRY_VERIFY(!shown.item("listFocus"));
        NavigationState::shared().clear();
        shown.settle();
        while (!shown.isFocusInSidebar() || shown.stop() != u"Terremotos")
            shown.press(Qt::Key_Tab);
        QTRY_VERIFY(shown.item("sidebarFocus"));
        shown.press(Qt::Key_Down);
        QTRY_VERIFY(!shown.item("sidebarFocus"));
    }
};

QTEST_MAIN(KeyboardTest)
#include "KeyboardTest.moc"
