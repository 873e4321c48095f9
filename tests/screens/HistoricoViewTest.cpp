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
/// The main window on the history, over events that a test stores.
struct History : ShownWindow
{
    void store(const char *iso, const QString &location = QStringLiteral("W FRONTERA.IHI"), double magnitude = 1.6)
    {
        container.mainContext().insert(Earthquake(QString::number(++events), instant(iso), 27.7, -18.0, 12.0, magnitude,
                                                  QStringLiteral("mbLg"), std::nullopt, location));
    }

    /// `count` events, one a minute back from noon on 22 November 2026.
    void storeMany(int count)
    {
        const Instant noon = instant("2026-11-22T12:00:00Z");
        for (int i = 0; i < count; ++i)
            container.mainContext().insert(Earthquake(QString::number(++events), noon - i * 1min, 27.7, -18.0, 12.0,
                                                      0.3 + i % 40 * 0.1, QStringLiteral("mbLg"), std::nullopt,
                                                      QStringLiteral("ATLÁNTICO-CANARIAS")));
    }

    bool open(QSize size = {1100, 720})
    {
        container.mainContext().save();
        NavigationState::shared().select(QStringLiteral("historico"));
        if (!show(size))
            return false;
        screen = window().findChild<HistoricoScreen *>();
        return screen;
    }

    /// Walks by Tab until the item has the focus; false when it never gets it.
    bool moveFocusTo(const QQuickItem *item)
    {
        for (int stop = 0; stop < 12 && window().activeFocusItem() != item; ++stop)
            press(Qt::Key_Tab);
        return window().activeFocusItem() == item;
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
        shown.press(Qt::Key_Tab);
        QTRY_VERIFY(shown.moveFocusTo(shown.list()));
        shown.press(Qt::Key_End);
        QCOMPARE(shown.rows(), 50);
        QMetaObject::invokeMethod(shown.list(), "positionViewAtEnd");
        shown.settle();
        QQuickItem *more = shown.named("Cargar más");
        QVERIFY(more);
        shown.click(more);
        QCOMPARE(shown.rows(), 51);
        QCOMPARE(shown.screen->rows()->currentRow(), 49);
        QVERIFY(!shown.named("Cargar más"));
        // The button took the focus with it.
        QCOMPARE(shown.window().activeFocusItem(), shown.list());
    }

    void loadingIsSeenWhileItRuns()
    {
        History shown;
        shown.storeMany(51);
        QVERIFY(shown.open());
        QMetaObject::invokeMethod(shown.list(), "positionViewAtEnd");
        shown.settle();
        QStringList seen;
        connect(shown.screen->viewModel(), &HistoricoViewModel::isLoadingChanged, &shown.window(), [&] {
            const QQuickItem *more = shown.item("loadMore");
            const auto letter = [](bool holds, char16_t yes) { return QString(QChar(holds ? yes : u'-')); };
            seen.append(letter(shown.list(), u'L') + letter(shown.named("Cargando histórico…"), u'S')
                        + letter(more, u'M') + letter(more && more->isEnabled(), u'E'));
        });
        shown.screen->viewModel()->loadMore();
        QCOMPARE(seen, QStringList({QStringLiteral("LSM-"), QStringLiteral("L---")}));
        seen.clear();
        shown.screen->viewModel()->loadInitial();
        QCOMPARE(seen.value(0), QStringLiteral("-S--"));
    }

    void monthsHaveTheirHeaders()
    {
        History shown;
        shown.store("2026-11-01T12:00:00Z");
        shown.store("2025-11-01T12:00:00Z");
        QVERIFY(shown.open());
        QVERIFY(shown.named("November 2026"));
        QVERIFY(shown.named("November 2025"));
    }

    void emptyPeriodSaysSo()
    {
        History shown;
        shown.store("2026-11-01T12:00:00Z");
        QVERIFY(shown.open());
        QVERIFY(shown.list());
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
        shown.store("2026-11-20T12:00:00Z", QStringLiteral("GÜÍMAR"));
        shown.storeMany(50);
        QVERIFY(shown.open());
        const auto months = [&] {
            QStringList ids;
            for (int row = 0; row < shown.rows(); ++row)
                ids.append(shown.screen->rows()->at(row).location());
            return ids.join(u',');
        };
        shown.world.notificationCenter.post(NotificationName::focusSearch);
        shown.settle();
        shown.type("guimar");
        shown.pass(299ms);
        QCOMPARE(shown.rows(), 50);
        shown.pass(1ms);
        // The match is on the second page, which only the button brings in.
        QCOMPARE(months(), QString());
        QVERIFY(shown.list());
        QVERIFY(!shown.item("filterButton")->property("active").toBool());
        shown.click(shown.named("Cargar más"));
        QCOMPARE(months(), QStringLiteral("GÜÍMAR"));
        shown.screen->setSearchPresented(false);
        QCOMPARE(shown.screen->searchText(), QString());
        shown.pass(300ms);
        QCOMPARE(shown.rows(), 51);
    }

    void onlyTheScreenOnShowAnswersTheMenu()
    {
        History shown;
        QVERIFY(shown.open());
        const auto post = [&] {
            shown.screen->setProperty("showFilterSheet", false);
            shown.screen->setSearchPresented(false);
            shown.world.notificationCenter.post(NotificationName::openFilter);
            shown.world.notificationCenter.post(NotificationName::focusSearch);
        };
        shown.screen->disappear();
        post();
        QVERIFY(!shown.screen->property("showFilterSheet").toBool());
        QVERIFY(!shown.screen->isSearchPresented());
        shown.screen->appear();
        post();
        QVERIFY(shown.screen->property("showFilterSheet").toBool());
        QVERIFY(shown.screen->isSearchPresented());
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
