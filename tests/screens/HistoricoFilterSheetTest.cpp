// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/ModelContext.h"
#include "Support/ShownWindow.h"
#include "Support/Table.h"
#include "Support/TestInstant.h"
#include "iOS/Historico/HistoricoScreen.h"
#include "macOS/NavigationState.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

namespace {
using Filter = HistoricoViewModel::DateFilterMode;
using None = HistoricoViewModel::None;
using YearMonth = HistoricoViewModel::YearMonth;
using CustomRange = HistoricoViewModel::CustomRange;

/// The history with events of two years, and its filter sheet.
struct Sheet : ShownWindow
{
    Sheet()
    {
        // Nothing is to be met on its way to another place.
        world.appearance.setReducedMotion(true);
        for (const char *iso : {"2026-11-20T12:00:00Z", "2025-03-10T12:00:00Z", "2025-02-10T12:00:00Z"})
            container.mainContext().insert(Earthquake(QString::fromLatin1(iso), instant(iso), 27.7, -18.0, 12.0, 1.6,
                                                      QStringLiteral("mbLg"), std::nullopt, QStringLiteral("MAZO")));
        container.mainContext().save();
    }

    /// Puts a filter in force and opens the sheet.
    bool open(const Filter &filter = None{}, QSize size = {1100, 720})
    {
        NavigationState::shared().select(QStringLiteral("historico"));
        if (!show(size))
            return false;
        screen = window().findChild<HistoricoScreen *>();
        screen->viewModel()->applyFilter(filter);
        return reopen();
    }

    bool reopen()
    {
        click(named("Abrir filtros"));
        return QTest::qWaitFor([this] { return isOpen(); });
    }

    bool isOpen() const
    {
        const QQuickItem *segments = item("filterMode");
        const QQuickItem *menu = named("Modo: Sin filtro");
        return (segments && segments->hasActiveFocus()) || (menu && menu->hasActiveFocus());
    }
    bool isClosed() { return !named("Filtrar histórico"); }
    void use(const char *name) { click(named(name)); }
    bool shows(const char *name) const { return named(name); }
    const Filter &filter() const { return screen->viewModel()->filterMode(); }

    /// The names in this order that show, parted by commas.
    QString shownOf(std::initializer_list<const char *> names) const
    {
        QStringList shown;
        for (const char *name : names)
            if (shows(name))
                shown.append(QString::fromUtf8(name));
        return shown.join(u',');
    }

    /// Chooses the entry of a picker's menu that lies `steps` below the chosen one; false when the menu stays.
    bool choose(const char *name, int steps)
    {
        QQuickItem *picker = named(name);
        picker->forceActiveFocus(Qt::TabFocusReason);
        press(Qt::Key_Space);
        for (int i = 0; i < std::abs(steps); ++i)
            press(steps > 0 ? Qt::Key_Down : Qt::Key_Up);
        press(Qt::Key_Return);
        // Until it has faded out the menu takes every press.
        return QTest::qWaitFor([picker] { return picker->hasActiveFocus(); });
    }

    HistoricoScreen *screen = nullptr;
};

const CustomRange twoDays{instant("2026-11-10T10:30:00.250Z"), instant("2026-11-12T18:45:00Z")};
}

class HistoricoFilterSheetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void opensOnTheFilterInForce_data()
    {
        Table<Filter, QString> row;
        row("none", None{}, "");
        row("year", YearMonth{2025, std::nullopt}, "Año: 2025,Mes (opcional),Mes: Todo el año,Borrar filtro");
        row("month", YearMonth{2025, 3}, "Año: 2025,Mes (opcional),Mes: March,Borrar filtro");
        row("year without events", YearMonth{2001, 3}, "Año: ,Mes (opcional),Mes: March,Borrar filtro");
        row("range", twoDays, "Desde,Fecha inicio: Nov 10, 2026,Hasta,Fecha fin: Nov 12, 2026,Borrar filtro");
    }

    void opensOnTheFilterInForce()
    {
        const auto [filter, shown] = Table<Filter, QString>::current();
        Sheet sheet;
        QVERIFY(sheet.open(filter));
        QCOMPARE(sheet.shownOf({"Año: 2025", "Año: ", "Mes (opcional)", "Mes: Todo el año", "Mes: March", "Desde",
                                "Fecha inicio: Nov 10, 2026", "Hasta", "Fecha fin: Nov 12, 2026", "Borrar filtro"}),
                 shown);
        QCOMPARE(faultsOfItems(sheet.window()), QStringList());
    }

    void modesAreAMenuWhereTheirSegmentsDoNotFit()
    {
        Sheet sheet;
        QVERIFY(sheet.open(None{}, {400, 720}));
        QVERIFY(!sheet.item("filterMode"));
        QVERIFY(sheet.choose("Modo: Sin filtro", 1));
        QVERIFY(sheet.shows("Modo: Año / Mes"));
        QVERIFY(sheet.shows("Año: Todos"));
    }

    void onlyApplyAndClearReachTheHistory_data()
    {
        Table<QString, int, Filter> row;
        const Filter before = YearMonth{2025, 3};
        const Filter today = CustomRange{instant("2026-11-22T00:00:00Z"), instant("2026-11-22T20:00:00Z")};
        row("cancel", "Cancelar", 0, before);
        row("Escape", QString(), Qt::Key_Escape, before);
        row("apply", "Aplicar", 0, today);
        row("Enter", QString(), Qt::Key_Return, today);
        row("Enter on the number pad", QString(), Qt::Key_Enter, today);
        row("Enter on a date", "Fecha inicio: Nov 22, 2026", Qt::Key_Return, today);
        row("Enter on cancel", "Cancelar", Qt::Key_Return, before);
        row("clear", "Borrar filtro", 0, Filter(None{}));
    }

    void onlyApplyAndClearReachTheHistory()
    {
        const auto [button, key, filter] = Table<QString, int, Filter>::current();
        Sheet sheet;
        QVERIFY(sheet.open(YearMonth{2025, 3}));
        QSignalSpy told(sheet.screen->viewModel(), &HistoricoViewModel::filterModeChanged);
        sheet.press(Qt::Key_Right);
        QVERIFY(sheet.shows("Fecha fin: Nov 22, 2026"));
        QCOMPARE(told.count(), 0);
        if (key == 0)
            sheet.click(sheet.named(button));
        else if (!button.isEmpty())
            sheet.named(button)->forceActiveFocus(Qt::TabFocusReason);
        if (key != 0)
            sheet.press(Qt::Key(key));
        QTRY_VERIFY(sheet.isClosed());
        QVERIFY(sheet.filter() == filter);
        QCOMPARE(told.count(), filter == Filter(YearMonth{2025, 3}) ? 0 : 1);
        QVERIFY(!sheet.screen->property("showFilterSheet").toBool());
    }

    void resultIsLoadedBeforeTheSheetGoes()
    {
        Sheet sheet;
        QVERIFY(sheet.open(YearMonth{2025, std::nullopt}));
        qsizetype loaded = -1;
        connect(sheet.screen, &HistoricoScreen::showFilterSheetChanged, &sheet.window(),
                [&] { loaded = qsizetype(sheet.screen->viewModel()->loadedEarthquakes().size()); });
        sheet.press(Qt::Key_Left);
        sheet.use("Aplicar");
        QTRY_VERIFY(sheet.isClosed());
        QCOMPARE(loaded, 3);
    }

    void monthSurvivesAChangeOfYear()
    {
        Sheet sheet;
        QVERIFY(sheet.open());
        sheet.press(Qt::Key_Right);
        QVERIFY(!sheet.shows("Mes (opcional)"));
        QVERIFY(sheet.choose("Año: Todos", 2));
        QVERIFY(sheet.choose("Mes: Todo el año", 3));
        QVERIFY(sheet.choose("Año: 2025", -2));
        QVERIFY(sheet.shows("Año: Todos"));
        QVERIFY(!sheet.shows("Mes (opcional)"));
        QVERIFY(sheet.choose("Año: Todos", 1));
        QVERIFY(sheet.shows("Mes: March"));
        QVERIFY2(!sheet.shows("Borrar filtro"), "there is no filter in force yet");
        QVERIFY(sheet.filter() == Filter(None{}));
        // No Enter so far has left the sheet: they went to the menus.
        sheet.press(Qt::Key_Return);
        QTRY_VERIFY(sheet.isClosed());
        QVERIFY(sheet.filter() == Filter(YearMonth{2026, 3}));
    }

    void yearOfAllIsNoFilter()
    {
        Sheet sheet;
        QVERIFY(sheet.open(YearMonth{2025, 3}));
        QVERIFY(sheet.choose("Año: 2025", -2));
        QVERIFY2(sheet.shows("Borrar filtro"), "the filter in force decides, not the sheet's");
        sheet.use("Aplicar");
        QTRY_VERIFY(sheet.isClosed());
        QVERIFY(sheet.filter() == Filter(None{}));
    }

    void cancelledChoiceIsForgotten()
    {
        Sheet sheet;
        QVERIFY(sheet.open());
        sheet.press(Qt::Key_Right);
        sheet.press(Qt::Key_Right);
        QVERIFY(sheet.shows("Desde"));
        sheet.press(Qt::Key_Escape);
        QTRY_VERIFY(sheet.isClosed());
        QVERIFY(sheet.reopen());
        QVERIFY(!sheet.shows("Desde"));
    }

    void datesBoundEachOtherAndKeepTheirTime()
    {
        Sheet sheet;
        QVERIFY(sheet.open(twoDays));
        QQuickItem *start = sheet.named("Fecha inicio: Nov 10, 2026");
        start->forceActiveFocus(Qt::TabFocusReason);
        sheet.press(Qt::Key_Down);
        // The calendar stops at the end of the range.
        for (int day = 0; day < 5; ++day)
            sheet.press(Qt::Key_Right);
        sheet.press(Qt::Key_Return);
        QTRY_VERIFY(start->hasActiveFocus());
        sheet.type("2026-11-13");
        sheet.press(Qt::Key_Return);
        QVERIFY(start->property("isRefused").toBool());
        sheet.press(Qt::Key_Escape);
        QQuickItem *end = sheet.named("Fecha fin: Nov 12, 2026");
        end->forceActiveFocus(Qt::TabFocusReason);
        sheet.type("11/11/2026");
        sheet.press(Qt::Key_Return);
        QVERIFY(end->property("isRefused").toBool());
        sheet.press(Qt::Key_Escape);
        sheet.type("12/1/2026");
        sheet.press(Qt::Key_Return);
        sheet.press(Qt::Key_Return);
        QTRY_VERIFY(sheet.isClosed());
        QVERIFY(sheet.filter()
                == Filter(CustomRange{instant("2026-11-12T10:30:00.250Z"), instant("2026-12-01T18:45:00Z")}));
    }

    void typedDateThatIsNoneIsRefusedInPlace()
    {
        Sheet sheet;
        QVERIFY(sheet.open(twoDays));
        QQuickItem *end = sheet.named("Fecha fin: Nov 12, 2026");
        end->forceActiveFocus(Qt::TabFocusReason);
        sheet.type("2026-11-31");
        // Left by a press on the button, not by Enter.
        sheet.use("Aplicar");
        QVERIFY(end->property("isRefused").toBool());
        QTRY_VERIFY(sheet.shows("Fecha no válida. Ejemplo: 11/12/2026"));
        QCOMPARE(sheet.textOf("typedDate"), QStringLiteral("2026-11-31"));
        QVERIFY(!sheet.named("Aplicar")->isEnabled());
        sheet.press(Qt::Key_Return);
        QVERIFY(!sheet.isClosed());
        QVERIFY(sheet.filter() == Filter(twoDays));
        sheet.click(sheet.item("typedDate"));
        sheet.press(Qt::Key_End);
        sheet.press(Qt::Key_Backspace);
        sheet.type("0");
        QVERIFY(!end->property("isRefused").toBool());
        sheet.use("Aplicar");
        QTRY_VERIFY(sheet.isClosed());
        QVERIFY(sheet.filter() == Filter(CustomRange{twoDays.start, instant("2026-11-30T18:45:00Z")}));
    }
};

QTEST_MAIN(HistoricoFilterSheetTest)
#include "HistoricoFilterSheetTest.moc"
