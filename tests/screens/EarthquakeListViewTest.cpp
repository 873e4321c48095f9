// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/ShownWindow.h"
#include "Support/Table.h"
#include "Support/TestEarthquake.h"
#include "iOS/Shared/EarthquakeSectionModel.h"
#include "iOS/Ultimos/EarthquakeListScreen.h"

#include <QAccessible>
#include <QTest>

#include <algorithm>

using namespace std::chrono_literals;

namespace {
/// An event of the page, so many seconds before the window opens.
ParsedEarthquake row(const QString &eventID, Instant now, std::chrono::seconds ago,
                     const QString &location = QStringLiteral("W EL HIERRO"), double magnitude = 2.5)
{
    return testRow(eventID, std::chrono::floor<std::chrono::seconds>(now - ago), magnitude, location);
}

/// Twenty events, two hours apart, the newest first.
QList<ParsedEarthquake> twentyRows(Instant now)
{
    QList<ParsedEarthquake> rows;
    for (int i = 0; i < 20; ++i)
        rows.append(row(QString::number(100 - i), now, i * 2h,
                        i % 2 ? QStringLiteral("W EL HIERRO") : QStringLiteral("ATLÁNTICO-CANARIAS"),
                        i % 2 ? 1.5 : 2.5));
    return rows;
}

/// The main window on the list of the twenty.
struct List : ShownWindow
{
    bool open(QSize size = {1100, 720})
    {
        enqueuePage(twentyRows(world.clock.now()));
        return show(size);
    }

    QQuickItem *list() const { return item("earthquakeList"); }
    int count() const { return list()->property("count").toInt(); }
    int current() const { return list()->property("currentIndex").toInt(); }

    /// Where the current row stands in the window.
    double place() const { return list()->property("currentItem").value<QQuickItem *>()->mapToScene(QPointF()).y(); }

    void filterBy(const char *choice)
    {
        click(item("filterButton"));
        click(named(choice));
    }
};
}

class EarthquakeListViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fillings()
    {
        ShownWindow shown;
        shown.world.urlSession.holdsAnswers = true;
        QVERIFY(shown.show());
        QVERIFY(shown.item("listLoading"));
        QVERIFY(!shown.item("refreshButton")->isEnabled());
        // No network at the first start.
        shown.world.urlSession.release();
        shown.settle();
        QVERIFY(shown.item("listEmpty"));
        QVERIFY(!shown.item("pageSubtitle"));
        QVERIFY(shown.item("refreshButton")->isEnabled());
        // A store with nothing but old events.
        shown.world.urlSession.holdsAnswers = false;
        shown.enqueuePage({row(QStringLiteral("1"), shown.world.clock.now(), 31 * 24h)});
        shown.click(shown.item("refreshButton"));
        QVERIFY(shown.item("listNoResults"));
        shown.enqueuePage({row(QStringLiteral("2"), shown.world.clock.now(), 1h)});
        shown.pass(600s);
        QVERIFY(shown.item("earthquakeList"));
        QVERIFY(!shown.item("listNoResults"));
    }

    void sectionsAndTheirTitles()
    {
        ShownWindow shown;
        const Instant now = shown.world.clock.now();
        shown.enqueuePage({row(QStringLiteral("a"), now, 1h, QStringLiteral("ARONA")),
                           row(QStringLiteral("b"), now, 48h, QStringLiteral("ADEJE")),
                           row(QStringLiteral("c"), now, 8 * 24h, QStringLiteral("ADEJE"))});
        QVERIFY(shown.show());
        QCOMPARE(headers(shown),
                 QStringLiteral("Last 24h – 22 Nov 2026|Last 7 days – 15 Nov 2026 – 22 Nov 2026|"
                                "Last 30 days – 23 Oct 2026 – 15 Nov 2026"));
        // Headers that are used again for other sections tell the new one.
        shown.press(Qt::Key_F, Qt::ControlModifier);
        shown.type("adeje");
        shown.pass(300ms);
        QCOMPARE(headers(shown),
                 QStringLiteral("Last 7 days – 15 Nov 2026 – 22 Nov 2026|"
                                "Last 30 days – 23 Oct 2026 – 15 Nov 2026"));
        // Time alone moves the events on.
        shown.press(Qt::Key_Escape);
        shown.pass(300ms);
        shown.pass(24h);
        QCOMPARE(headers(shown),
                 QStringLiteral("Last 7 days – 16 Nov 2026 – 23 Nov 2026|"
                                "Last 30 days – 24 Oct 2026 – 16 Nov 2026"));
    }

    void searchFromTheKeyboard()
    {
        List shown;
        QVERIFY(shown.open());
        QCOMPARE(shown.count(), 20);
        shown.press(Qt::Key_F, Qt::ControlModifier);
        shown.type("atlantico");
        QCOMPARE(shown.count(), 20);
        shown.pass(300ms);
        QCOMPARE(shown.count(), 10);
        // On to what was found, and the search stays in force.
        shown.press(Qt::Key_Down);
        QVERIFY(shown.list()->hasActiveFocus());
        QCOMPARE(shown.count(), 10);
        // Escape empties the field, and once more leaves it.
        shown.press(Qt::Key_F, Qt::ControlModifier);
        shown.press(Qt::Key_Escape);
        shown.pass(300ms);
        QCOMPARE(shown.count(), 20);
        QVERIFY(shown.item("searchField")->hasActiveFocus());
        shown.press(Qt::Key_Escape);
        QVERIFY(!shown.item("searchField")->hasActiveFocus());
        // Out of a search in force from anywhere on the screen.
        shown.press(Qt::Key_F, Qt::ControlModifier);
        shown.type("atlantico");
        shown.pass(300ms);
        shown.item("filterButton")->forceActiveFocus(Qt::TabFocusReason);
        shown.press(Qt::Key_Escape);
        shown.pass(300ms);
        QCOMPARE(shown.item("searchField")->property("text").toString(), QString());
        QCOMPARE(shown.count(), 20);
        QVERIFY(shown.list()->hasActiveFocus());
    }

    void menuOpensSearchAndFiltersOnTheScreenOnShowOnly()
    {
        List shown;
        QVERIFY(shown.open());
        shown.world.notificationCenter.post(NotificationName::focusSearch);
        shown.settle();
        QVERIFY(shown.item("searchField")->hasActiveFocus());
        shown.press(Qt::Key_Escape);
        shown.world.notificationCenter.post(NotificationName::openFilter);
        shown.settle();
        QVERIFY(shown.item("filterPopover"));
        shown.press(Qt::Key_Escape);
        QTRY_VERIFY(!shown.item("filterPopover"));
        shown.press(Qt::Key_O, Qt::ControlModifier);
        QVERIFY(shown.item("filterPopover"));
        shown.press(Qt::Key_Escape);
        QTRY_VERIFY(!shown.item("filterPopover"));
        shown.click(shown.item("row 3"));
        QTRY_VERIFY(!shown.item("earthquakeList"));
        shown.world.notificationCenter.post(NotificationName::focusSearch);
        shown.world.notificationCenter.post(NotificationName::openFilter);
        shown.settle();
        QVERIFY(!shown.item("filterPopover"));
        shown.press(Qt::Key_Escape);
        QTRY_VERIFY(shown.item("earthquakeList"));
        QVERIFY(!shown.item("searchField")->hasActiveFocus());
    }

    void historyIsPushedForAsLongAsTheStateSaysSo()
    {
        List shown;
        QVERIFY(shown.open());
        shown.list()->forceActiveFocus(Qt::TabFocusReason);
        auto *screen = shown.window().findChild<EarthquakeListScreen *>();
        const auto title = [&] { return shown.textOf("pageTitle"); };
        screen->setProperty("showHistorico", true);
        QTRY_VERIFY(!shown.item("earthquakeList"));
        QCOMPARE(title(), QStringLiteral("Histórico"));
        QVERIFY(!screen->isActive());
        screen->setProperty("showHistorico", false);
        QTRY_VERIFY(!shown.item("history"));
        QCOMPARE(title(), QStringLiteral("Sismos"));
        screen->setProperty("showHistorico", true);
        QTRY_VERIFY(!shown.item("earthquakeList"));
        shown.press(Qt::Key_Escape);
        QVERIFY(!screen->property("showHistorico").toBool());
        QTRY_VERIFY(!shown.item("history"));
        QVERIFY(screen->isActive());
    }

    void settingsAreASheetForAsLongAsTheStateSaysSo_data()
    {
        Table<Qt::Key, QByteArray> row;
        row("list", Qt::Key_1, "EarthquakeListScreen");
        row("map", Qt::Key_3, "MapScreen");
        row("statistics", Qt::Key_4, "StatsScreen");
    }

    void settingsAreASheetForAsLongAsTheStateSaysSo()
    {
        const auto [section, type] = Table<Qt::Key, QByteArray>::current();
        const QByteArray &screenType = type;
        ShownWindow shown;
        QVERIFY(shown.show({480, 480}));
        shown.press(section, Qt::ControlModifier);
        const QObjectList objects = shown.window().findChildren<QObject *>();
        const auto screen =
            std::ranges::find_if(objects, [&](QObject *object) { return object->inherits(screenType); });
        QVERIFY(screen != objects.end());
        (*screen)->setProperty("showSettings", true);
        shown.settle();
        const QQuickItem *sheet = shown.item("settingsSheet");
        QVERIFY(sheet);
        QVERIFY(shown.named("Notifications"));
        QVERIFY(sheet->mapToScene(QPointF(0, sheet->height())).y() <= 480 - 24);
        QCOMPARE(faultsOfItems(shown.window()), QStringList());
        shown.press(Qt::Key_Escape);
        QVERIFY(!(*screen)->property("showSettings").toBool());
        QTRY_VERIFY(!shown.item("settingsSheet"));
    }

    void popoverScrollsInALowWindow()
    {
        ShownWindow shown;
        QVERIFY(shown.show({480, 480}));
        shown.click(shown.item("filterButton"));
        const QQuickItem *popover = shown.item("filterPopover");
        const auto isInSight = [&](QQuickItem *item) {
            const QRectF place = item->mapRectToItem(popover, item->boundingRect());
            return place.top() >= 0 && place.bottom() <= popover->height();
        };
        QVERIFY(popover->mapToScene(QPointF(0, popover->height())).y() <= 480 - 12);
        QVERIFY(!isInSight(shown.named("Reset Filters")));
        shown.named("Reset Filters")->forceActiveFocus(Qt::TabFocusReason);
        QVERIFY(isInSight(shown.named("Reset Filters")));
        QVERIFY(!isInSight(shown.named("Magnitude")));
    }

    void popoverWritesEachChoiceAndStaysOpen()
    {
        List shown;
        QVERIFY(shown.open());
        QQuickItem *button = shown.item("filterButton");
        shown.click(button);
        shown.click(shown.named("Minor"));
        QCOMPARE(shown.count(), 10);
        // The popover itself stays in sight for a while when it closes.
        QVERIFY(button->property("open").toBool());
        QCOMPARE(button->property("iconName").toString(), QStringLiteral("line.3.horizontal.decrease.circle.fill"));
        shown.click(shown.named("Last 24h"));
        // The newest, and then every fourth hour up to 24 hours ago.
        QCOMPARE(shown.count(), 7);
        shown.click(shown.named("Reset Filters"));
        QCOMPARE(shown.count(), 20);
        QVERIFY(button->property("open").toBool());
        QCOMPARE(button->property("iconName").toString(), QStringLiteral("line.3.horizontal.decrease.circle"));
        shown.press(Qt::Key_Escape);
        QTRY_VERIFY(!shown.item("filterPopover"));
    }

    void refreshButtonWaitsOutItsCountdown()
    {
        List shown;
        QVERIFY(shown.open());
        QQuickItem *button = shown.item("refreshButton");
        const auto icons = [&] {
            const QList<QQuickItem *> all = shown.itemsOf("Icon");
            return std::ranges::count_if(all, [&](QQuickItem *icon) { return button->isAncestorOf(icon); });
        };
        QCOMPARE(icons(), 1);
        QVERIFY(!shown.item("cooldownBar"));
        shown.enqueuePage(twentyRows(shown.world.clock.now()));
        shown.click(button);
        QVERIFY(!button->isEnabled());
        QCOMPARE(shown.item("cooldownBar")->property("progress").toDouble(), 0.0);
        shown.pass(15s);
        QCOMPARE(shown.item("cooldownBar")->property("progress").toDouble(), 0.25);
        shown.click(button);
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(2));
        shown.pass(44s);
        QCOMPARE(shown.item("cooldownBar")->property("progress").toDouble(), 59.0 / 60);
        shown.pass(1s);
        QVERIFY(button->isEnabled());
        QVERIFY(!shown.item("cooldownBar"));
    }

    void subtitleFollowsTheMinutes()
    {
        List shown;
        QVERIFY(shown.open());
        const auto subtitle = [&] { return shown.textOf("pageSubtitle"); };
        QCOMPARE(subtitle(), QStringLiteral("updated just now"));
        shown.pass(125s);
        QCOMPARE(subtitle(), QStringLiteral("updated 2 min ago"));
        // A clock that is set back makes no negative age.
        shown.world.clock.setNow(shown.world.clock.now() - 2h);
        shown.pass(60s);
        QCOMPARE(subtitle(), QStringLiteral("updated just now"));
    }

    void placeAndCurrentRowSurviveWhatComesIn()
    {
        List shown;
        const Instant now = shown.world.clock.now();
        QVERIFY(shown.open({1100, 500}));
        shown.list()->forceActiveFocus(Qt::TabFocusReason);
        for (int i = 0; i < 15; ++i)
            QTest::keyClick(&shown.window(), Qt::Key_Down);
        shown.settle();
        QCOMPARE(shown.current(), 14);
        const double place = shown.place();
        QVERIFY(shown.list()->property("contentY").toDouble() > 0);
        // Two new events above, and the hour moves some rows into another section.
        QList<ParsedEarthquake> rows = twentyRows(now);
        rows.prepend(row(QStringLiteral("201"), now, 10s));
        rows.prepend(row(QStringLiteral("202"), now, 5s));
        shown.enqueuePage(rows);
        shown.pass(600s);
        QCOMPARE(shown.count(), 22);
        QCOMPARE(shown.current(), 16);
        QCOMPARE(shown.place(), place);
        QVERIFY(shown.list()->hasActiveFocus());
        shown.pass(60s);
        QCOMPARE(shown.current(), 16);
        QCOMPARE(shown.place(), place);
    }

    void keysMoveTheChosenRow()
    {
        List shown;
        // 52 of toolbar, then room for ten rows of 44.
        QVERIFY(shown.open({1100, 52 + 44 * 10 + 20}));
        shown.list()->forceActiveFocus(Qt::TabFocusReason);
        const auto after = [&](Qt::Key key) {
            shown.press(key);
            return shown.current();
        };
        QCOMPARE(after(Qt::Key_Down), 0);
        QCOMPARE(after(Qt::Key_Up), 0);
        QCOMPARE(after(Qt::Key_Down), 1);
        QCOMPARE(after(Qt::Key_End), 19);
        QCOMPARE(after(Qt::Key_Down), 19);
        QCOMPARE(after(Qt::Key_Home), 0);
        QCOMPARE(after(Qt::Key_PageDown), 9);
        QCOMPARE(after(Qt::Key_PageDown), 18);
        QCOMPARE(after(Qt::Key_PageUp), 9);
        QCOMPARE(after(Qt::Key_PageUp), 0);
        QCOMPARE(after(Qt::Key_PageUp), 0);
        // The choice is the model's, whatever the keys have done.
        shown.list()->property("model").value<EarthquakeSectionModel *>()->setCurrentRow(7);
        QCOMPARE(shown.current(), 7);
    }

    void pullBeyondTheTopRefreshes_data()
    {
        Table<int, int> row;
        row("one notch", 1, 1);
        row("three notches", 3, 2);
        row("six notches are one pull", 6, 2);
    }

    void pullBeyondTheTopRefreshes()
    {
        const auto [notches, requests] = Table<int, int>::current();
        List shown;
        QVERIFY(shown.open());
        shown.enqueuePage(twentyRows(shown.world.clock.now()));
        for (int i = 0; i < notches; ++i)
            shown.turnWheel(shown.list(), 120);
        shown.settle();
        QCOMPARE(int(shown.world.urlSession.requests.size()), requests);
    }

    void scrollingUpToTheTopIsNoPull()
    {
        List shown;
        QVERIFY(shown.open({1100, 400}));
        shown.list()->setProperty("contentY", 200);
        shown.turnWheel(shown.list(), 120);
        // The list has come to its top, and the same turn goes on.
        shown.list()->setProperty(
            "contentY", shown.list()->property("originY").toDouble() - shown.list()->property("topMargin").toDouble());
        QVERIFY(shown.list()->property("atYBeginning").toBool());
        for (int i = 0; i < 5; ++i)
            shown.turnWheel(shown.list(), 120);
        shown.settle();
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(1));
    }

    void everyItemIsPlainAndNamed()
    {
        List shown;
        QVERIFY(shown.open());
        shown.click(shown.item("filterButton"));
        QCOMPARE(faultsOfItems(shown.window()), QStringList());
        QQuickItem *first = shown.named("Magnitud 2.5, ATLÁNTICO-CANARIAS, 11/22/26, 20:00, profundidad 10 km");
        QVERIFY(first);
        // The sentence says it all: its parts are not read once more.
        QCOMPARE(QAccessible::queryAccessibleInterface(first)->childCount(), 0);
    }

    void pageUnderTheDetailHasDisappeared()
    {
        List shown;
        QVERIFY(shown.open());
        shown.filterBy("Minor");
        shown.press(Qt::Key_Escape);
        QTRY_VERIFY(!shown.item("filterPopover"));
        shown.click(shown.item("row 3"));
        QTRY_VERIFY(!shown.item("earthquakeList"));
        // No refresh by itself.
        shown.pass(2h);
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(1));
        // On return it refreshes, and still has its filter and its row.
        shown.press(Qt::Key_Escape);
        QTRY_VERIFY(shown.item("earthquakeList"));
        shown.settle();
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(2));
        QCOMPARE(shown.count(), 10);
        QCOMPARE(shown.current(), 3);
        shown.pass(600s);
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(3));
    }

    void leavingTheSectionEndsItsFiltersAndItsRefreshes()
    {
        List shown;
        QVERIFY(shown.open());
        shown.filterBy("Minor");
        shown.press(Qt::Key_Escape);
        shown.press(Qt::Key_2, Qt::ControlModifier);
        shown.pass(2h);
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(1));
        shown.press(Qt::Key_1, Qt::ControlModifier);
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(2));
        QCOMPARE(shown.count(), 20);
    }

private:
    static QString headers(const ShownWindow &shown)
    {
        QList<std::pair<double, QString>> titles;
        for (QQuickItem *header : shown.items("sectionTitle"))
            titles.append({header->mapToScene(QPointF()).y(), header->property("text").toString()});
        std::sort(titles.begin(), titles.end());
        QStringList texts;
        for (const auto &title : titles)
            texts.append(title.second);
        return texts.join(u'|');
    }
};

QTEST_MAIN(EarthquakeListViewTest)
#include "EarthquakeListViewTest.moc"
