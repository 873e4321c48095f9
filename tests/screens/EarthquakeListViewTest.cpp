// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/ShownWindow.h"
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
    return {eventID,
            std::chrono::floor<std::chrono::seconds>(now - ago),
            27.75,
            -18.25,
            10,
            magnitude,
            QStringLiteral("mbLg"),
            std::nullopt,
            location};
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
}

class EarthquakeListViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fillings()
    {
        ShownWindow shown;
        shown.world.urlSession.holdsAnswers = true;
        QVERIFY2(shown.show(), qPrintable(shown.warnings().join(u'\n')));
        QVERIFY(shown.item(QStringLiteral("listLoading")));
        QVERIFY(!shown.item(QStringLiteral("refreshButton"))->isEnabled());
        // No network at the first start.
        shown.world.urlSession.release();
        shown.settle();
        QVERIFY(shown.item(QStringLiteral("listEmpty")));
        QVERIFY(shown.item(QStringLiteral("refreshButton"))->isEnabled());
        // A store with nothing but old events.
        shown.world.urlSession.holdsAnswers = false;
        shown.enqueuePage({row(QStringLiteral("1"), shown.world.clock.now(), 31 * 24h)});
        shown.click(shown.item(QStringLiteral("refreshButton")));
        QVERIFY(shown.item(QStringLiteral("listNoResults")));
        shown.enqueuePage({row(QStringLiteral("2"), shown.world.clock.now(), 1h)});
        shown.pass(600s);
        QVERIFY(shown.item(QStringLiteral("earthquakeList")));
        QVERIFY(!shown.item(QStringLiteral("listNoResults")));
    }

    void captivePortalLeavesTheScreenEmpty()
    {
        ShownWindow shown;
        shown.world.urlSession.enqueue("<html><table><tr><td>Sign in</td></tr></table></html>");
        QVERIFY(shown.show());
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(1));
        QVERIFY(shown.item(QStringLiteral("listEmpty")));
        QVERIFY(!shown.item(QStringLiteral("pageSubtitle")));
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
        shown.type(QStringLiteral("adeje"));
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
        ShownWindow shown;
        shown.enqueuePage(twentyRows(shown.world.clock.now()));
        QVERIFY(shown.show());
        QQuickItem *list = shown.item(QStringLiteral("earthquakeList"));
        QCOMPARE(list->property("count").toInt(), 20);
        shown.press(Qt::Key_F, Qt::ControlModifier);
        shown.type(QStringLiteral("atlantico"));
        QCOMPARE(list->property("count").toInt(), 20);
        shown.pass(300ms);
        QCOMPARE(list->property("count").toInt(), 10);
        // On to what was found, and the search stays in force.
        shown.press(Qt::Key_Down);
        QVERIFY(list->hasActiveFocus());
        QCOMPARE(list->property("count").toInt(), 10);
        // Escape empties the field, and once more leaves it.
        shown.press(Qt::Key_F, Qt::ControlModifier);
        shown.press(Qt::Key_Escape);
        shown.pass(300ms);
        QCOMPARE(list->property("count").toInt(), 20);
        QVERIFY(shown.item(QStringLiteral("searchField"))->hasActiveFocus());
        shown.press(Qt::Key_Escape);
        QVERIFY(!shown.item(QStringLiteral("searchField"))->hasActiveFocus());
        // Out of a search in force from anywhere on the screen.
        shown.press(Qt::Key_F, Qt::ControlModifier);
        shown.type(QStringLiteral("atlantico"));
        shown.pass(300ms);
        shown.item(QStringLiteral("filterButton"))->forceActiveFocus(Qt::TabFocusReason);
        shown.press(Qt::Key_Escape);
        shown.pass(300ms);
        QCOMPARE(shown.item(QStringLiteral("searchField"))->property("text").toString(), QString());
        QCOMPARE(list->property("count").toInt(), 20);
        QVERIFY(list->hasActiveFocus());
    }

    void menuOpensSearchAndFiltersOnTheScreenOnShowOnly()
    {
        ShownWindow shown;
        shown.enqueuePage(twentyRows(shown.world.clock.now()));
        QVERIFY(shown.show());
        shown.world.notificationCenter.post(NotificationName::focusSearch);
        shown.settle();
        QVERIFY(shown.item(QStringLiteral("searchField"))->hasActiveFocus());
        shown.press(Qt::Key_Escape);
        shown.world.notificationCenter.post(NotificationName::openFilter);
        shown.settle();
        QVERIFY(shown.item(QStringLiteral("filterPopover")));
        shown.press(Qt::Key_Escape);
        QTRY_VERIFY(!shown.item(QStringLiteral("filterPopover")));
        shown.press(Qt::Key_O, Qt::ControlModifier);
        QVERIFY(shown.item(QStringLiteral("filterPopover")));
        shown.press(Qt::Key_Escape);
        QTRY_VERIFY(!shown.item(QStringLiteral("filterPopover")));
        shown.click(shown.item(QStringLiteral("row 3")));
        QTRY_VERIFY(!shown.item(QStringLiteral("earthquakeList")));
        shown.world.notificationCenter.post(NotificationName::focusSearch);
        shown.world.notificationCenter.post(NotificationName::openFilter);
        shown.settle();
        QVERIFY(!shown.item(QStringLiteral("filterPopover")));
        shown.press(Qt::Key_Escape);
        QTRY_VERIFY(shown.item(QStringLiteral("earthquakeList")));
        QVERIFY(!shown.item(QStringLiteral("searchField"))->hasActiveFocus());
    }

    void historyIsPushedForAsLongAsTheStateSaysSo()
    {
        ShownWindow shown;
        shown.enqueuePage(twentyRows(shown.world.clock.now()));
        QVERIFY(shown.show());
        shown.item(QStringLiteral("earthquakeList"))->forceActiveFocus(Qt::TabFocusReason);
        auto *screen = shown.window().findChild<EarthquakeListScreen *>();
        const auto title = [&] { return shown.item(QStringLiteral("pageTitle"))->property("text").toString(); };
        screen->setProperty("showHistorico", true);
        QTRY_VERIFY(!shown.item(QStringLiteral("earthquakeList")));
        QCOMPARE(title(), QStringLiteral("Histórico"));
        QVERIFY(!screen->isActive());
        screen->setProperty("showHistorico", false);
        QTRY_VERIFY(!shown.item(QStringLiteral("history")));
        QCOMPARE(title(), QStringLiteral("Sismos"));
        screen->setProperty("showHistorico", true);
        QTRY_VERIFY(!shown.item(QStringLiteral("earthquakeList")));
        shown.press(Qt::Key_Escape);
        QVERIFY(!screen->property("showHistorico").toBool());
        QTRY_VERIFY(!shown.item(QStringLiteral("history")));
        QVERIFY(screen->isActive());
    }

    void settingsAreASheetForAsLongAsTheStateSaysSo_data()
    {
        QTest::addColumn<int>("section");
        QTest::addColumn<QByteArray>("screenType");
        QTest::newRow("list") << int(Qt::Key_1) << QByteArray("EarthquakeListScreen");
        QTest::newRow("map") << int(Qt::Key_3) << QByteArray("MapScreen");
        QTest::newRow("statistics") << int(Qt::Key_4) << QByteArray("StatsScreen");
    }

    void settingsAreASheetForAsLongAsTheStateSaysSo()
    {
        QFETCH(int, section);
        QFETCH(QByteArray, screenType);
        ShownWindow shown;
        QVERIFY(shown.show({480, 480}));
        shown.press(Qt::Key(section), Qt::ControlModifier);
        const QObjectList objects = shown.window().findChildren<QObject *>();
        const auto screen =
            std::ranges::find_if(objects, [&](QObject *object) { return object->inherits(screenType); });
        QVERIFY(screen != objects.end());
        (*screen)->setProperty("showSettings", true);
        shown.settle();
        const QQuickItem *sheet = shown.item(QStringLiteral("settingsSheet"));
        QVERIFY(sheet);
        QVERIFY(shown.named(QStringLiteral("Notifications")));
        QVERIFY(sheet->mapToScene(QPointF(0, sheet->height())).y() <= 480 - 24);
        QCOMPARE(faultsOfItems(shown.window()), QStringList());
        shown.press(Qt::Key_Escape);
        QVERIFY(!(*screen)->property("showSettings").toBool());
        QTRY_VERIFY(!shown.item(QStringLiteral("settingsSheet")));
    }

    void popoverScrollsInALowWindow()
    {
        ShownWindow shown;
        QVERIFY(shown.show({480, 480}));
        shown.click(shown.item(QStringLiteral("filterButton")));
        const QQuickItem *popover = shown.item(QStringLiteral("filterPopover"));
        const auto isInSight = [&](QQuickItem *item) {
            const QRectF place = item->mapRectToItem(popover, item->boundingRect());
            return place.top() >= 0 && place.bottom() <= popover->height();
        };
        QVERIFY(popover->mapToScene(QPointF(0, popover->height())).y() <= 480 - 12);
        QVERIFY(!isInSight(shown.named(QStringLiteral("Reset Filters"))));
        shown.named(QStringLiteral("Reset Filters"))->forceActiveFocus(Qt::TabFocusReason);
        QVERIFY(isInSight(shown.named(QStringLiteral("Reset Filters"))));
        QVERIFY(!isInSight(shown.named(QStringLiteral("Magnitude"))));
    }

    void popoverWritesEachChoiceAndStaysOpen()
    {
        ShownWindow shown;
        shown.enqueuePage(twentyRows(shown.world.clock.now()));
        QVERIFY(shown.show());
        QQuickItem *list = shown.item(QStringLiteral("earthquakeList"));
        QQuickItem *button = shown.item(QStringLiteral("filterButton"));
        shown.click(button);
        shown.click(shown.named(QStringLiteral("Minor")));
        QCOMPARE(list->property("count").toInt(), 10);
        // The popover itself stays in sight for a while when it closes.
        QVERIFY(button->property("open").toBool());
        QCOMPARE(button->property("iconName").toString(), QStringLiteral("line.3.horizontal.decrease.circle.fill"));
        shown.click(shown.named(QStringLiteral("Last 24h")));
        // The newest, and then every fourth hour up to 24 hours ago.
        QCOMPARE(list->property("count").toInt(), 7);
        shown.click(shown.named(QStringLiteral("Reset Filters")));
        QCOMPARE(list->property("count").toInt(), 20);
        QVERIFY(button->property("open").toBool());
        QCOMPARE(button->property("iconName").toString(), QStringLiteral("line.3.horizontal.decrease.circle"));
        shown.press(Qt::Key_Escape);
        QTRY_VERIFY(!shown.item(QStringLiteral("filterPopover")));
    }

    void refreshButtonWaitsOutItsCountdown()
    {
        ShownWindow shown;
        const QList<ParsedEarthquake> rows = twentyRows(shown.world.clock.now());
        shown.enqueuePage(rows);
        QVERIFY(shown.show());
        QQuickItem *button = shown.item(QStringLiteral("refreshButton"));
        const auto icons = [&] {
            const QList<QQuickItem *> all = shown.itemsOf("Icon");
            return std::ranges::count_if(all, [&](QQuickItem *icon) { return button->isAncestorOf(icon); });
        };
        QCOMPARE(icons(), 1);
        QVERIFY(!shown.item(QStringLiteral("cooldownBar")));
        shown.enqueuePage(rows);
        shown.click(button);
        QVERIFY(!button->isEnabled());
        QCOMPARE(shown.item(QStringLiteral("cooldownBar"))->property("progress").toDouble(), 0.0);
        shown.pass(15s);
        QCOMPARE(shown.item(QStringLiteral("cooldownBar"))->property("progress").toDouble(), 0.25);
        shown.click(button);
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(2));
        shown.pass(44s);
        QCOMPARE(shown.item(QStringLiteral("cooldownBar"))->property("progress").toDouble(), 59.0 / 60);
        shown.pass(1s);
        QVERIFY(button->isEnabled());
        QVERIFY(!shown.item(QStringLiteral("cooldownBar")));
    }

    void subtitleFollowsTheMinutes()
    {
        ShownWindow shown;
        shown.enqueuePage(twentyRows(shown.world.clock.now()));
        QVERIFY(shown.show());
        const auto subtitle = [&] { return shown.item(QStringLiteral("pageSubtitle"))->property("text").toString(); };
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
        ShownWindow shown;
        const Instant now = shown.world.clock.now();
        shown.enqueuePage(twentyRows(now));
        QVERIFY(shown.show({1100, 500}));
        QQuickItem *list = shown.item(QStringLiteral("earthquakeList"));
        list->forceActiveFocus(Qt::TabFocusReason);
        for (int i = 0; i < 15; ++i)
            QTest::keyClick(&shown.window(), Qt::Key_Down);
        shown.settle();
        QCOMPARE(list->property("currentIndex").toInt(), 14);
        const double place = positionOf(shown, list);
        QVERIFY(list->property("contentY").toDouble() > 0);
        // Two new events above, and the hour moves some rows into another section.
        QList<ParsedEarthquake> rows = twentyRows(now);
        rows.prepend(row(QStringLiteral("201"), now, 10s));
        rows.prepend(row(QStringLiteral("202"), now, 5s));
        shown.enqueuePage(rows);
        shown.pass(600s);
        QCOMPARE(list->property("count").toInt(), 22);
        QCOMPARE(list->property("currentIndex").toInt(), 16);
        QCOMPARE(positionOf(shown, list), place);
        QVERIFY(list->hasActiveFocus());
        shown.pass(60s);
        QCOMPARE(list->property("currentIndex").toInt(), 16);
        QCOMPARE(positionOf(shown, list), place);
    }

    void currentRowStaysWithItsEventUnderAFilter()
    {
        ShownWindow shown;
        shown.enqueuePage(twentyRows(shown.world.clock.now()));
        QVERIFY(shown.show());
        QQuickItem *list = shown.item(QStringLiteral("earthquakeList"));
        list->forceActiveFocus(Qt::TabFocusReason);
        for (int i = 0; i < 5; ++i)
            QTest::keyClick(&shown.window(), Qt::Key_Down);
        QCOMPARE(list->property("currentIndex").toInt(), 4);
        shown.click(shown.item(QStringLiteral("filterButton")));
        shown.click(shown.named(QStringLiteral("Minor")));
        QCOMPARE(list->property("currentIndex").toInt(), 2);
        shown.click(shown.named(QStringLiteral("Reset Filters")));
        QCOMPARE(list->property("currentIndex").toInt(), 4);
    }

    void keysMoveTheChosenRow()
    {
        ShownWindow shown;
        shown.enqueuePage(twentyRows(shown.world.clock.now()));
        // 52 of toolbar, then room for ten rows of 44.
        QVERIFY(shown.show({1100, 52 + 44 * 10 + 20}));
        QQuickItem *list = shown.item(QStringLiteral("earthquakeList"));
        list->forceActiveFocus(Qt::TabFocusReason);
        const auto after = [&](Qt::Key key) {
            shown.press(key);
            return list->property("currentIndex").toInt();
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
        modelOf(shown)->setCurrentRow(7);
        QCOMPARE(list->property("currentIndex").toInt(), 7);
    }

    void pullBeyondTheTopRefreshes_data()
    {
        QTest::addColumn<int>("notches");
        QTest::addColumn<int>("requests");
        QTest::newRow("one notch") << 1 << 1;
        QTest::newRow("three notches") << 3 << 2;
        QTest::newRow("six notches are one pull") << 6 << 2;
    }

    void pullBeyondTheTopRefreshes()
    {
        QFETCH(int, notches);
        ShownWindow shown;
        const QList<ParsedEarthquake> rows = twentyRows(shown.world.clock.now());
        shown.enqueuePage(rows);
        QVERIFY(shown.show());
        shown.enqueuePage(rows);
        for (int i = 0; i < notches; ++i)
            shown.turnWheel(shown.item(QStringLiteral("earthquakeList")), 120);
        shown.settle();
        QTEST(int(shown.world.urlSession.requests.size()), "requests");
    }

    void scrollingUpToTheTopIsNoPull()
    {
        ShownWindow shown;
        const QList<ParsedEarthquake> rows = twentyRows(shown.world.clock.now());
        shown.enqueuePage(rows);
        QVERIFY(shown.show({1100, 400}));
        QQuickItem *list = shown.item(QStringLiteral("earthquakeList"));
        list->setProperty("contentY", 200);
        shown.turnWheel(list, 120);
        // The list has come to its top, and the same turn goes on.
        list->setProperty("contentY", list->property("originY").toDouble() - list->property("topMargin").toDouble());
        QVERIFY(list->property("atYBeginning").toBool());
        for (int i = 0; i < 5; ++i)
            shown.turnWheel(list, 120);
        shown.settle();
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(1));
    }

    void everyItemIsPlainAndNamed()
    {
        ShownWindow shown;
        shown.enqueuePage(twentyRows(shown.world.clock.now()));
        QVERIFY(shown.show());
        shown.click(shown.item(QStringLiteral("filterButton")));
        QCOMPARE(faultsOfItems(shown.window()), QStringList());
        QQuickItem *first =
            shown.named(QStringLiteral("Magnitud 2.5, ATLÁNTICO-CANARIAS, 11/22/26, 20:00, profundidad 10 km"));
        QVERIFY(first);
        // The sentence says it all: its parts are not read once more.
        QCOMPARE(QAccessible::queryAccessibleInterface(first)->childCount(), 0);
    }

    void pageUnderTheDetailHasDisappeared()
    {
        ShownWindow shown;
        shown.enqueuePage(twentyRows(shown.world.clock.now()));
        QVERIFY(shown.show());
        shown.click(shown.item(QStringLiteral("filterButton")));
        shown.click(shown.named(QStringLiteral("Minor")));
        shown.press(Qt::Key_Escape);
        QTRY_VERIFY(!shown.item(QStringLiteral("filterPopover")));
        shown.click(shown.item(QStringLiteral("row 3")));
        QTRY_VERIFY(!shown.item(QStringLiteral("earthquakeList")));
        // No refresh by itself, no answer to the menu.
        shown.pass(2h);
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(1));
        shown.world.notificationCenter.post(NotificationName::openFilter);
        shown.settle();
        QVERIFY(!shown.item(QStringLiteral("filterPopover")));
        // On return it refreshes, and still has its filter and its row.
        shown.press(Qt::Key_Escape);
        QTRY_VERIFY(shown.item(QStringLiteral("earthquakeList")));
        shown.settle();
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(2));
        QQuickItem *list = shown.item(QStringLiteral("earthquakeList"));
        QCOMPARE(list->property("count").toInt(), 10);
        QCOMPARE(list->property("currentIndex").toInt(), 3);
        shown.pass(600s);
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(3));
    }

    void leavingTheSectionEndsItsFiltersAndItsRefreshes()
    {
        ShownWindow shown;
        shown.enqueuePage(twentyRows(shown.world.clock.now()));
        QVERIFY(shown.show());
        shown.click(shown.item(QStringLiteral("filterButton")));
        shown.click(shown.named(QStringLiteral("Minor")));
        shown.press(Qt::Key_Escape);
        shown.press(Qt::Key_2, Qt::ControlModifier);
        shown.pass(2h);
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(1));
        shown.press(Qt::Key_1, Qt::ControlModifier);
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(2));
        QCOMPARE(shown.item(QStringLiteral("earthquakeList"))->property("count").toInt(), 20);
    }

private:
    static EarthquakeSectionModel *modelOf(const ShownWindow &shown)
    {
        return shown.item(QStringLiteral("earthquakeList"))->property("model").value<EarthquakeSectionModel *>();
    }
    /// Where the current row stands in the window.
    static double positionOf(const ShownWindow &, QQuickItem *list)
    {
        const auto *row = list->property("currentItem").value<QQuickItem *>();
        return row->mapToScene(QPointF()).y();
    }
    static QString headers(const ShownWindow &shown)
    {
        QList<std::pair<double, QString>> titles;
        for (QQuickItem *header : shown.items(QStringLiteral("sectionTitle")))
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
