// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/ModelContext.h"
#include "Support/ShownWindow.h"
#include "Support/Table.h"
#include "Support/TestEarthquake.h"
#include "Support/TestInstant.h"
#include "iOS/Historico/HistoricoScreen.h"
#include "macOS/NavigationState.h"

#include <QTest>

using namespace Qt::StringLiterals;
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
            container.mainContext().insert(testEarthquake(QLatin1String(iso), instant(iso).time_since_epoch() / 1s));
        container.mainContext().save();
    }

    /// Puts a filter in force and opens the sheet.
    bool open(const Filter &filter = None{}, QSize size = {1100, 720})
    {
        NavigationState::shared().select(u"historico"_s);
        if (!show(size))
            return false;
        screen = window().findChild<HistoricoScreen *>();
        screen->viewModel()->applyFilter(filter);
        return reopen();
    }

    bool reopen()
    {
        click(named("Abrir filtros"));
        const auto isFocused = [](const QQuickItem *item) { return item && item->hasActiveFocus(); };
        return QTest::qWaitFor([&] { return isFocused(item("filterMode")) || isFocused(named("Modo: Sin filtro")); });
    }

    bool isClosed() const { return !named("Filtrar histórico"); }
    const Filter &filter() const { return screen->viewModel()->filterMode(); }

    /// The names in this order that show, parted by commas.
    QString shownOf(const QStringList &names) const
    {
        QStringList shown = names;
        shown.removeIf([this](const QString &name) { return !named(name); });
        return shown.join(u',');
    }

    /// Chooses the entry of a picker's menu that lies `steps` below the chosen one; false when there is no such picker
    /// or the menu stays.
    bool choose(const char *name, int steps)
    {
        QQuickItem *picker = named(name);
        if (!picker)
            return false;
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
        QCOMPARE(sheet.shownOf({u"Año: 2025"_s, u"Año: "_s, u"Mes (opcional)"_s, u"Mes: Todo el año"_s, u"Mes: March"_s,
                                u"Desde"_s, u"Fecha inicio: Nov 10, 2026"_s, u"Hasta"_s, u"Fecha fin: Nov 12, 2026"_s,
                                u"Borrar filtro"_s}),
                 shown);
        QCOMPARE(faultsOfItems(sheet.window()), QStringList());
    }

    void modesAreAMenuWhereTheirSegmentsDoNotFit()
    {
        Sheet sheet;
        QVERIFY(sheet.open(None{}, {400, 720}));
        QVERIFY(!sheet.item("filterMode"));
        QVERIFY(sheet.choose("Modo: Sin filtro", 1));
        QVERIFY(sheet.named("Modo: Año / Mes") && sheet.named("Año: Todos"));
    }

    void onlyApplyAndClearReachTheHistory_data()
    {
        Table<QString, Qt::Key, Filter> row;
        const Filter before = YearMonth{2025, 3};
        const Filter today = CustomRange{instant("2026-11-22T00:00:00Z"), instant("2026-11-22T20:00:00Z")};
        row("Escape", "Aplicar", Qt::Key_Escape, before);
        row("Enter on cancel", "Cancelar", Qt::Key_Return, before);
        row("Enter", "Modo", Qt::Key_Return, today);
        row("Enter on the number pad", "Modo", Qt::Key_Enter, today);
        row("Enter on a date", "Fecha inicio: Nov 22, 2026", Qt::Key_Return, today);
        row("clear", "Borrar filtro", Qt::Key_Space, None{});
    }

    void onlyApplyAndClearReachTheHistory()
    {
        const auto [focused, key, filter] = Table<QString, Qt::Key, Filter>::current();
        Sheet sheet;
        QVERIFY(sheet.open(YearMonth{2025, 3}));
        sheet.press(Qt::Key_Right);
        QVERIFY(sheet.named("Fecha fin: Nov 22, 2026"));
        QVERIFY(sheet.filter() == Filter(YearMonth{2025, 3}));
        sheet.named(focused)->forceActiveFocus(Qt::TabFocusReason);
        sheet.press(key);
        QTRY_VERIFY(sheet.isClosed());
        QVERIFY(sheet.filter() == filter);
    }

    void monthSurvivesAChangeOfYear()
    {
        Sheet sheet;
        QVERIFY(sheet.open(YearMonth{2025, 3}));
        // A choice that is given up is forgotten.
        sheet.press(Qt::Key_Right);
        QVERIFY(sheet.named("Desde"));
        sheet.press(Qt::Key_Escape);
        QTRY_VERIFY(sheet.isClosed());
        QVERIFY(sheet.reopen());
        QVERIFY(!sheet.named("Desde"));

        QVERIFY(sheet.choose("Año: 2025", -2));
        QVERIFY(!sheet.named("Mes (opcional)"));
        QVERIFY2(sheet.named("Borrar filtro"), "the filter in force decides, not the sheet's");
        QVERIFY(sheet.choose("Año: Todos", 1));
        QVERIFY(sheet.choose("Mes: March", 2));
        // No Enter so far has left the sheet: they went to the menus.
        QVERIFY(sheet.filter() == Filter(YearMonth{2025, 3}));
        sheet.press(Qt::Key_Return);
        QTRY_VERIFY(sheet.isClosed());
        QVERIFY(sheet.filter() == Filter(YearMonth{2026, 5}));

        QVERIFY(sheet.reopen());
        QVERIFY(sheet.choose("Año: 2026", -1));
        sheet.click(sheet.named("Aplicar"));
        QTRY_VERIFY(sheet.isClosed());
        QVERIFY2(sheet.filter() == Filter(None{}), "all years are no filter");
    }

    void datesBoundEachOtherAndKeepTheirTime()
    {
        Sheet sheet;
        QVERIFY(sheet.open(twoDays));
        QQuickItem *start = sheet.named("Fecha inicio: Nov 10, 2026");
        QQuickItem *end = sheet.named("Fecha fin: Nov 12, 2026");
        const auto refuses = [&sheet](QQuickItem *field, const char *text) {
            field->forceActiveFocus(Qt::TabFocusReason);
            sheet.type(text);
            sheet.press(Qt::Key_Return);
            const bool isRefused = field->property("isRefused").toBool();
            sheet.press(Qt::Key_Escape);
            return isRefused;
        };
        start->forceActiveFocus(Qt::TabFocusReason);
        sheet.press(Qt::Key_Down);
        // The calendar stops at the end of the range.
        for (int day = 0; day < 5; ++day)
            sheet.press(Qt::Key_Right);
        sheet.press(Qt::Key_Return);
        QTRY_VERIFY(start->hasActiveFocus());
        QVERIFY(refuses(start, "2026-11-13"));
        QVERIFY(refuses(end, "11/11/2026"));

        sheet.type("2026-11-31");
        // Left by a press on the button, not by Enter.
        sheet.click(sheet.named("Aplicar"));
        QTRY_VERIFY(sheet.named("Fecha no válida. Ejemplo: 11/12/2026"));
        QCOMPARE(sheet.textOf("typedDate"), u"2026-11-31"_s);
        QVERIFY(!sheet.named("Aplicar")->isEnabled());
        sheet.press(Qt::Key_Return);
        QVERIFY(!sheet.isClosed());
        QVERIFY(sheet.filter() == Filter(twoDays));
        sheet.click(sheet.item("typedDate"));
        sheet.press(Qt::Key_End);
        sheet.press(Qt::Key_Backspace);
        sheet.type("0");
        sheet.click(sheet.named("Aplicar"));
        QTRY_VERIFY(sheet.isClosed());
        QVERIFY(sheet.filter()
                == Filter(CustomRange{instant("2026-11-12T10:30:00.250Z"), instant("2026-11-30T18:45:00Z")}));
    }
};

QTEST_MAIN(HistoricoFilterSheetTest)
#include "HistoricoFilterSheetTest.moc"
