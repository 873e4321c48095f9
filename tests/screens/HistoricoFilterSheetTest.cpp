// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/ModelContext.h"
#include "Support/ShownWindow.h"
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
        click(named(QStringLiteral("Abrir filtros")));
        return QTest::qWaitFor([this] { return isOpen(); });
    }

    bool isOpen() const
    {
        const QQuickItem *segments = item(QStringLiteral("filterMode"));
        const QQuickItem *menu = named(QStringLiteral("Modo: Sin filtro"));
        return (segments && segments->hasActiveFocus()) || (menu && menu->hasActiveFocus());
    }
    bool isClosed() { return !named(QStringLiteral("Filtrar histórico")); }
    void use(const char *name) { click(named(QString::fromUtf8(name))); }
    bool shows(const char *name) const { return named(QString::fromUtf8(name)); }
    const Filter &filter() const { return screen->viewModel()->filterMode(); }

    /// The names in this order that show, parted by commas.
    QString shownOf(const QStringList &names) const
    {
        QStringList shown;
        for (const QString &name : names)
            if (this->named(name))
                shown.append(name);
        return shown.join(u',');
    }

    /// Chooses the entry of a picker's menu that lies `steps` below the chosen one; false when the menu stays.
    bool choose(const char *name, int steps)
    {
        QQuickItem *picker = named(QString::fromUtf8(name));
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

Q_DECLARE_METATYPE(HistoricoViewModel::DateFilterMode)

class HistoricoFilterSheetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void opensOnTheFilterInForce_data()
    {
        QTest::addColumn<Filter>("filter");
        QTest::addColumn<QString>("shown");
        const auto row = [](const char *name, const Filter &filter, const char *shown) {
            QTest::newRow(name) << filter << QString::fromUtf8(shown);
        };
        row("none", None{}, "");
        row("year", YearMonth{2025, std::nullopt}, "Año: 2025,Mes (opcional),Mes: Todo el año,Borrar filtro");
        row("month", YearMonth{2025, 3}, "Año: 2025,Mes (opcional),Mes: March,Borrar filtro");
        row("year without events", YearMonth{2001, 3}, "Año: ,Mes (opcional),Mes: March,Borrar filtro");
        row("range", twoDays, "Desde,Fecha inicio: Nov 10, 2026,Hasta,Fecha fin: Nov 12, 2026,Borrar filtro");
    }

    void opensOnTheFilterInForce()
    {
        QFETCH(Filter, filter);
        Sheet sheet;
        QVERIFY(sheet.open(filter));
        QTEST(sheet.shownOf({QStringLiteral("Año: 2025"), QStringLiteral("Año: "), QStringLiteral("Mes (opcional)"),
                             QStringLiteral("Mes: Todo el año"), QStringLiteral("Mes: March"), QStringLiteral("Desde"),
                             QStringLiteral("Fecha inicio: Nov 10, 2026"), QStringLiteral("Hasta"),
                             QStringLiteral("Fecha fin: Nov 12, 2026"), QStringLiteral("Borrar filtro")}),
              "shown");
        QCOMPARE(faultsOfItems(sheet.window()), QStringList());
        QVERIFY2(sheet.warnings().isEmpty(), qPrintable(sheet.warnings().join(u'\n')));
    }

    void modesAreAMenuWhereTheirSegmentsDoNotFit()
    {
        Sheet sheet;
        QVERIFY(sheet.open(None{}, {400, 720}));
        QVERIFY(!sheet.item(QStringLiteral("filterMode")));
        QVERIFY(sheet.choose("Modo: Sin filtro", 1));
        QVERIFY(sheet.shows("Modo: Año / Mes"));
        QVERIFY(sheet.shows("Año: Todos"));
    }

    void onlyApplyAndClearReachTheHistory_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<int>("key");
        QTest::addColumn<Filter>("filter");
        const Filter before = YearMonth{2025, 3};
        const Filter today = CustomRange{instant("2026-11-22T00:00:00Z"), instant("2026-11-22T20:00:00Z")};
        QTest::newRow("cancel") << QStringLiteral("Cancelar") << 0 << before;
        QTest::newRow("Escape") << QString() << int(Qt::Key_Escape) << before;
        QTest::newRow("apply") << QStringLiteral("Aplicar") << 0 << today;
        QTest::newRow("Enter") << QString() << int(Qt::Key_Return) << today;
        QTest::newRow("Enter on the number pad") << QString() << int(Qt::Key_Enter) << today;
        QTest::newRow("Enter on a date") << QStringLiteral("Fecha inicio: Nov 22, 2026") << int(Qt::Key_Return)
                                         << today;
        QTest::newRow("Enter on cancel") << QStringLiteral("Cancelar") << int(Qt::Key_Return) << before;
        QTest::newRow("clear") << QStringLiteral("Borrar filtro") << 0 << Filter(None{});
    }

    void onlyApplyAndClearReachTheHistory()
    {
        QFETCH(QString, button);
        QFETCH(int, key);
        QFETCH(Filter, filter);
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
        QQuickItem *start = sheet.named(QStringLiteral("Fecha inicio: Nov 10, 2026"));
        start->forceActiveFocus(Qt::TabFocusReason);
        sheet.press(Qt::Key_Down);
        // The calendar stops at the end of the range.
        for (int day = 0; day < 5; ++day)
            sheet.press(Qt::Key_Right);
        sheet.press(Qt::Key_Return);
        QTRY_VERIFY(start->hasActiveFocus());
        sheet.type(QStringLiteral("2026-11-13"));
        sheet.press(Qt::Key_Return);
        QVERIFY(start->property("isRefused").toBool());
        sheet.press(Qt::Key_Escape);
        QQuickItem *end = sheet.named(QStringLiteral("Fecha fin: Nov 12, 2026"));
        end->forceActiveFocus(Qt::TabFocusReason);
        sheet.type(QStringLiteral("11/11/2026"));
        sheet.press(Qt::Key_Return);
        QVERIFY(end->property("isRefused").toBool());
        sheet.press(Qt::Key_Escape);
        sheet.type(QStringLiteral("12/1/2026"));
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
        QQuickItem *end = sheet.named(QStringLiteral("Fecha fin: Nov 12, 2026"));
        end->forceActiveFocus(Qt::TabFocusReason);
        sheet.type(QStringLiteral("2026-11-31"));
        // Left by a press on the button, not by Enter.
        sheet.use("Aplicar");
        QVERIFY(end->property("isRefused").toBool());
        QTRY_VERIFY(sheet.shows("Fecha no válida. Ejemplo: 11/12/2026"));
        QCOMPARE(sheet.item(QStringLiteral("typedDate"))->property("text").toString(), QStringLiteral("2026-11-31"));
        QVERIFY(!sheet.named(QStringLiteral("Aplicar"))->isEnabled());
        sheet.press(Qt::Key_Return);
        QVERIFY(!sheet.isClosed());
        QVERIFY(sheet.filter() == Filter(twoDays));
        sheet.click(sheet.item(QStringLiteral("typedDate")));
        sheet.press(Qt::Key_End);
        sheet.press(Qt::Key_Backspace);
        sheet.type(QStringLiteral("0"));
        QVERIFY(!end->property("isRefused").toBool());
        sheet.use("Aplicar");
        QTRY_VERIFY(sheet.isClosed());
        QVERIFY(sheet.filter() == Filter(CustomRange{twoDays.start, instant("2026-11-30T18:45:00Z")}));
    }
};

QTEST_MAIN(HistoricoFilterSheetTest)
#include "HistoricoFilterSheetTest.moc"
