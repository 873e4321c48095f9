// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/ModelContext.h"
#include "Support/ShownWindow.h"
#include "Support/TestEarthquake.h"
#include "Support/TestInstant.h"
#include "iOS/Historico/HistoricoScreen.h"
#include "macOS/NavigationState.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {
/// The main window on the history, over events that a test stores.
struct History : ShownWindow
{
    void store(const char *iso, const QString &location = u"W FRONTERA.IHI"_s)
    {
        container.mainContext().insert(
            testEarthquake(QString::number(++events), instant(iso).time_since_epoch() / 1s, 1.6, location));
    }

    /// `count` events, one a minute back from noon on 22 November 2026.
    void storeMany(int count)
    {
        const qint64 noon = instant("2026-11-22T12:00:00Z").time_since_epoch() / 1s;
        for (int i = 0; i < count; ++i)
            container.mainContext().insert(testEarthquake(QString::number(++events), noon - i * 60));
    }

    bool open()
    {
        container.mainContext().save();
        NavigationState::shared().select(u"historico"_s);
        if (!show())
            return false;
        screen = window().findChild<HistoricoScreen *>();
        return screen;
    }

    QQuickItem *list() const { return item("history"); }
    int rows() const { return screen->rows()->rowCount(); }

    int events = 0;
    HistoricoScreen *screen = nullptr;
};
}

class HistoricoViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nextPageComesOnlyFromItsButton()
    {
        History shown;
        shown.storeMany(51);
        QVERIFY(shown.open());
        QCOMPARE(shown.rows(), 50);
        shown.list()->forceActiveFocus(Qt::TabFocusReason);
        shown.press(Qt::Key_End);
        QCOMPARE(shown.rows(), 50);
        QMetaObject::invokeMethod(shown.list(), "positionViewAtEnd");
        shown.settle();
        QQuickItem *more = shown.named("Cargar más");
        QVERIFY(more);
        bool isLoadingShown = false;
        connect(shown.screen->viewModel(), &HistoricoViewModel::isLoadingChanged, &shown.window(),
                [&] { isLoadingShown = isLoadingShown || (shown.named("Cargando histórico…") && !more->isEnabled()); });
        shown.click(more);
        QVERIFY(isLoadingShown);
        QCOMPARE(shown.rows(), 51);
        QCOMPARE(shown.screen->rows()->currentRow(), 49);
        QVERIFY(!shown.named("Cargar más"));
        // The button took the focus with it.
        QCOMPARE(shown.window().activeFocusItem(), shown.list());
    }

    void monthsHaveTheirHeadersAndAnEmptyPeriodSaysSo()
    {
        History shown;
        shown.store("2026-11-01T12:00:00Z");
        shown.store("2025-11-01T12:00:00Z");
        QVERIFY(shown.open());
        QVERIFY(shown.named("November 2026"));
        QVERIFY(shown.named("November 2025"));
        shown.screen->viewModel()->applyFilter(HistoricoViewModel::YearMonth{2001, std::nullopt});
        shown.settle();
        QVERIFY(shown.named("Sin resultados. No hay terremotos para el período seleccionado."));
        QVERIFY(!shown.list());
        QCOMPARE(shown.screen->subtitle(), QString());
        QVERIFY(shown.item("filterButton")->property("active").toBool());
        QCOMPARE(faultsOfItems(shown.window()), QStringList());
    }

    void searchLooksThroughWhatIsLoaded()
    {
        History shown;
        shown.store("2026-11-20T12:00:00Z", u"GÜÍMAR"_s);
        shown.storeMany(50);
        QVERIFY(shown.open());
        shown.press(Qt::Key_F, Qt::ControlModifier);
        shown.type("guimar");
        QCOMPARE(shown.rows(), 50);
        shown.pass(300ms);
        // The match is on the second page, which only the button brings in.
        QCOMPARE(shown.rows(), 0);
        QVERIFY(shown.list());
        QVERIFY(!shown.item("filterButton")->property("active").toBool());
        shown.click(shown.named("Cargar más"));
        QCOMPARE(shown.rows(), 1);
        QCOMPARE(shown.screen->rows()->at(0).location(), u"GÜÍMAR"_s);
        shown.screen->setSearchPresented(false);
        shown.pass(300ms);
        QCOMPARE(shown.rows(), 51);
    }

    void onlyTheScreenOnShowAnswersTheMenu()
    {
        History shown;
        QVERIFY(shown.open());
        for (const bool isOnShow : {false, true}) {
            isOnShow ? shown.screen->appear() : shown.screen->disappear();
            shown.world.notificationCenter.post(NotificationName::openFilter);
            shown.world.notificationCenter.post(NotificationName::focusSearch);
            QCOMPARE(shown.screen->property("showFilterSheet").toBool(), isOnShow);
            QCOMPARE(shown.screen->isSearchPresented(), isOnShow);
        }
    }

    void listThatComesBackTheSameKeepsItsPlace()
    {
        History shown;
        shown.storeMany(60);
        QVERIFY(shown.open());
        shown.screen->rows()->setCurrentRow(49);
        shown.settle();
        const QVariant place = shown.list()->property("contentY");
        QVERIFY(place.toReal() > 0);
        QSignalSpy removed(shown.screen->rows(), &QAbstractItemModel::rowsRemoved);
        shown.screen->appear();
        shown.settle();
        QCOMPARE(removed.count(), 0);
        QCOMPARE(shown.list()->property("contentY"), place);
        QCOMPARE(shown.screen->rows()->currentRow(), 49);
    }
};

QTEST_MAIN(HistoricoViewTest)
#include "HistoricoViewTest.moc"
