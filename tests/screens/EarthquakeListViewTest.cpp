// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/ShownWindow.h"
#include "Support/Table.h"
#include "Support/TestEarthquake.h"
#include "iOS/Shared/EarthquakeSectionModel.h"

#include <QAccessible>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {
/// An event of the page, so many seconds before `now`.
ParsedEarthquake row(const QString &eventID, Instant now, std::chrono::seconds ago,
                     const QString &location = u"W EL HIERRO"_s, double magnitude = 2.5)
{
    return testRow(eventID, std::chrono::floor<std::chrono::seconds>(now - ago), magnitude, location);
}

/// Twenty events, two hours apart, the newest first.
QList<ParsedEarthquake> twentyRows(Instant now)
{
    QList<ParsedEarthquake> rows;
    for (int i = 0; i < 20; ++i)
        rows.append(row(QString::number(100 - i), now, i * 2h, i % 2 ? u"W EL HIERRO"_s : u"ATLÁNTICO-CANARIAS"_s,
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
    int count() const { return list() ? list()->property("count").toInt() : 0; }
    int current() const { return list()->property("currentIndex").toInt(); }

    /// Where the current row stands in the window.
    double place() const { return list()->property("currentItem").value<QQuickItem *>()->mapToScene(QPointF()).y(); }

    size_t requests() const { return world.urlSession.requests.size(); }
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
        shown.enqueuePage({row(u"1"_s, shown.world.clock.now(), 31 * 24h)});
        shown.click(shown.item("refreshButton"));
        QVERIFY(shown.item("listNoResults"));
        shown.enqueuePage({row(u"2"_s, shown.world.clock.now(), 1h)});
        shown.pass(600s);
        QVERIFY(shown.item("earthquakeList"));
        QVERIFY(!shown.item("listNoResults"));
    }

    void sectionsAndTheirTitles()
    {
        ShownWindow shown;
        const Instant now = shown.world.clock.now();
        shown.enqueuePage({row(u"a"_s, now, 1h, u"ARONA"_s), row(u"b"_s, now, 48h, u"ADEJE"_s),
                           row(u"c"_s, now, 8 * 24h, u"ADEJE"_s)});
        QVERIFY(shown.show());
        QCOMPARE(headers(shown),
                 u"Last 24h – 22 Nov 2026|Last 7 days – 15 Nov 2026 – 22 Nov 2026|"
                 "Last 30 days – 23 Oct 2026 – 15 Nov 2026"_s);
        // Headers that are used again for other sections tell the new one.
        shown.press(Qt::Key_F, Qt::ControlModifier);
        shown.type("adeje");
        shown.pass(300ms);
        QCOMPARE(headers(shown),
                 u"Last 7 days – 15 Nov 2026 – 22 Nov 2026|"
                 "Last 30 days – 23 Oct 2026 – 15 Nov 2026"_s);
        // Time alone moves the events on.
        shown.press(Qt::Key_Escape);
        shown.pass(300ms);
        shown.pass(24h);
        QCOMPARE(headers(shown),
                 u"Last 7 days – 16 Nov 2026 – 23 Nov 2026|"
                 "Last 30 days – 24 Oct 2026 – 16 Nov 2026"_s);
    }

    void searchFromTheKeyboard()
    {
        List shown;
        QVERIFY(shown.open());
        QQuickItem *field = shown.item("searchField");
        shown.world.notificationCenter.post(NotificationName::focusSearch);
        shown.settle();
        QVERIFY(field->hasActiveFocus());
        const auto found = [&](const char *typed) {
            shown.press(Qt::Key_F, Qt::ControlModifier);
            shown.type(typed);
            shown.pass(300ms);
            return shown.count();
        };
        QCOMPARE(found("atlantico"), 10);
        // On to what was found, and the search stays in force.
        shown.press(Qt::Key_Down);
        QVERIFY(shown.list()->hasActiveFocus());
        QCOMPARE(shown.count(), 10);
        // Escape empties the field, and once more leaves it.
        shown.press(Qt::Key_F, Qt::ControlModifier);
        shown.press(Qt::Key_Escape);
        QCOMPARE(found(""), 20);
        QVERIFY(field->hasActiveFocus());
        shown.press(Qt::Key_Escape);
        QVERIFY(!field->hasActiveFocus());
        // Its button empties it too.
        QCOMPARE(found("atlantico"), 10);
        shown.click(shown.named("Borrar búsqueda"));
        QVERIFY(field->hasActiveFocus());
        QCOMPARE(found(""), 20);
        // Out of a search in force from anywhere on the screen.
        QCOMPARE(found("atlantico"), 10);
        shown.item("filterButton")->forceActiveFocus(Qt::TabFocusReason);
        shown.press(Qt::Key_Escape);
        shown.pass(300ms);
        QCOMPARE(field->property("text").toString(), QString());
        QCOMPARE(shown.count(), 20);
        QVERIFY(shown.list()->hasActiveFocus());
        // In a list without rows there is nothing to choose or to open.
        QCOMPARE(found("zzz"), 0);
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Down, Qt::Key_Return})
            shown.press(key);
        QVERIFY(!shown.item("detailMap"));
    }

    void settingsAndHistoryShowForAsLongAsTheStateSaysSo()
    {
        List shown;
        QVERIFY(shown.open({480, 480}));
        QObject *screen = nullptr;
        for (const auto &[section, type] :
             {std::pair(Qt::Key_3, "MapScreen"), {Qt::Key_4, "StatsScreen"}, {Qt::Key_1, "EarthquakeListScreen"}}) {
            shown.press(section, Qt::ControlModifier);
            const QObjectList objects = shown.window().findChildren<QObject *>();
            screen = *std::ranges::find_if(objects, [&](QObject *object) { return object->inherits(type); });
            screen->setProperty("showSettings", true);
            shown.settle();
            const QQuickItem *sheet = shown.item("settingsSheet");
            QVERIFY2(sheet && shown.named("Notifications"), type);
            QVERIFY(sheet->mapToScene(QPointF(0, sheet->height())).y() <= 480 - 24);
            QCOMPARE(faultsOfItems(shown.window()), QStringList());
            shown.press(Qt::Key_Escape);
            QVERIFY2(!screen->property("showSettings").toBool(), type);
            QTRY_VERIFY(!shown.item("settingsSheet"));
        }
        for (const bool isLeftByKey : {false, true}) {
            screen->setProperty("showHistorico", true);
            QTRY_VERIFY(!shown.item("earthquakeList"));
            QCOMPARE(shown.textOf("pageTitle"), u"Histórico"_s);
            if (isLeftByKey)
                shown.press(Qt::Key_Escape);
            else
                screen->setProperty("showHistorico", false);
            QTRY_VERIFY(!shown.item("history"));
            QCOMPARE(shown.textOf("pageTitle"), u"Sismos"_s);
            QVERIFY(!screen->property("showHistorico").toBool());
        }
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
    }

    void everyItemIsNamedAndThePopoverStaysOpen()
    {
        List shown;
        QVERIFY(shown.open());
        QQuickItem *first = shown.named("Magnitud 2.5, ATLÁNTICO-CANARIAS, 11/22/26, 20:00, profundidad 10 km");
        QVERIFY(first);
        QVERIFY2(QAccessible::queryAccessibleInterface(first)->childCount() == 0,
                 "parts of the sentence are read again");
        QQuickItem *button = shown.item("filterButton");
        shown.click(button);
        QCOMPARE(faultsOfItems(shown.window()), QStringList());
        const auto chosen = [&](const char *choice) {
            shown.click(shown.named(choice));
            // The popover itself stays in sight for a while when it closes.
            return u"%1 %2%3"_s.arg(shown.count())
                .arg(button->property("iconName").toString().section(u'.', 4),
                     button->property("open").toBool() ? QString() : u" closed"_s);
        };
        QCOMPARE(chosen("Minor"), u"10 circle.fill"_s);
        // The newest, and then every fourth hour up to 24 hours ago.
        QCOMPARE(chosen("Last 24h"), u"7 circle.fill"_s);
        QCOMPARE(chosen("Reset Filters"), u"20 circle"_s);
        shown.press(Qt::Key_Escape);
        QTRY_VERIFY(!shown.item("filterPopover"));
    }

    void toolbarTellsTheAgeAndWaitsOutTheCountdown()
    {
        List shown;
        QVERIFY(shown.open());
        const auto progress = [&] { return shown.item("cooldownBar")->property("progress").toDouble(); };
        QCOMPARE(shown.textOf("pageSubtitle"), u"updated just now"_s);
        shown.pass(125s);
        QCOMPARE(shown.textOf("pageSubtitle"), u"updated 2 min ago"_s);
        QQuickItem *button = shown.item("refreshButton");
        QVERIFY(!shown.item("cooldownBar"));
        shown.enqueuePage(twentyRows(shown.world.clock.now()));
        shown.click(button);
        QVERIFY(!button->isEnabled());
        QCOMPARE(progress(), 0.0);
        shown.pass(15s);
        QCOMPARE(progress(), 0.25);
        shown.click(button);
        QCOMPARE(shown.requests(), size_t(2));
        shown.pass(44s);
        QCOMPARE(progress(), 59.0 / 60);
        shown.pass(1s);
        QVERIFY(button->isEnabled());
        QVERIFY(!shown.item("cooldownBar"));
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
        shown.enqueuePage(QList{row(u"202"_s, now, 5s), row(u"201"_s, now, 10s)} + twentyRows(now));
        shown.pass(600s);
        QCOMPARE(shown.count(), 22);
        QCOMPARE(shown.current(), 16);
        QCOMPARE(shown.place(), place);
        QVERIFY(shown.list()->hasActiveFocus());
    }

    void keysMoveTheChosenRow()
    {
        List shown;
        // 52 of toolbar, then room for ten rows of 44.
        QVERIFY(shown.open({1100, 52 + 44 * 10 + 20}));
        shown.list()->forceActiveFocus(Qt::TabFocusReason);
        QStringList rows;
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Down, Qt::Key_End, Qt::Key_Down, Qt::Key_Home,
                                  Qt::Key_PageDown, Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_PageUp, Qt::Key_PageUp}) {
            shown.press(key);
            rows.append(QString::number(shown.current()));
        }
        QCOMPARE(rows.join(u' '), u"0 0 1 19 19 0 9 18 9 0 0"_s);
        // The choice is the model's, whatever the keys have done.
        shown.list()->property("model").value<EarthquakeSectionModel *>()->setCurrentRow(7);
        QCOMPARE(shown.current(), 7);
        // The row with the focus opens by a click too, and once more after the way back.
        for (int times = 0; times < 2; ++times) {
            shown.click(shown.item("row 7"));
            QVERIFY(shown.item("detailMap"));
            shown.press(Qt::Key_Escape);
            QTRY_VERIFY(!shown.item("detailMap"));
        }
    }

    void pullBeyondTheTopRefreshes_data()
    {
        Table<double, int, size_t> row;
        row("one notch", 0, 1, size_t(1));
        row("three notches", 0, 3, size_t(2));
        row("six notches are one pull", 0, 6, size_t(2));
        row("scrolling up to the top is none", 200, 6, size_t(1));
    }

    void pullBeyondTheTopRefreshes()
    {
        const auto [belowTop, notches, requests] = Table<double, int, size_t>::current();
        List shown;
        QVERIFY(shown.open({1100, 400}));
        shown.enqueuePage(twentyRows(shown.world.clock.now()));
        const double top = shown.list()->property("contentY").toDouble();
        shown.list()->setProperty("contentY", top + belowTop);
        for (int i = 0; i < notches; ++i) {
            shown.turnWheel(shown.list(), 120);
            // The list has come to its top, and the same turn goes on.
            shown.list()->setProperty("contentY", top);
        }
        QVERIFY(shown.list()->property("atYBeginning").toBool());
        shown.settle();
        QCOMPARE(shown.requests(), requests);
    }

    void pageUnderTheDetailHasDisappeared()
    {
        List shown;
        QVERIFY(shown.open());
        shown.press(Qt::Key_O, Qt::ControlModifier);
        shown.click(shown.named("Minor"));
        shown.press(Qt::Key_Escape);
        QTRY_VERIFY(!shown.item("filterPopover"));
        shown.click(shown.item("row 3"));
        QTRY_VERIFY(!shown.item("earthquakeList"));
        // No refresh by itself, and no answer to the menu.
        shown.pass(2h);
        QCOMPARE(shown.requests(), size_t(1));
        shown.press(Qt::Key_O, Qt::ControlModifier);
        shown.press(Qt::Key_F, Qt::ControlModifier);
        shown.world.notificationCenter.post(NotificationName::focusSearch);
        QVERIFY(!shown.item("filterPopover"));
        // On return it refreshes, and still has its filter and its row.
        shown.press(Qt::Key_Escape);
        QTRY_VERIFY(shown.item("earthquakeList"));
        shown.settle();
        QVERIFY(!shown.item("searchField")->hasActiveFocus());
        QCOMPARE(shown.requests(), size_t(2));
        QCOMPARE(shown.count(), 10);
        QCOMPARE(shown.current(), 3);
        shown.pass(600s);
        QCOMPARE(shown.requests(), size_t(3));
        // Another section ends its filter and its refreshes.
        shown.press(Qt::Key_2, Qt::ControlModifier);
        shown.pass(2h);
        QCOMPARE(shown.requests(), size_t(3));
        shown.press(Qt::Key_1, Qt::ControlModifier);
        QCOMPARE(shown.requests(), size_t(4));
        QCOMPARE(shown.count(), 20);
    }

private:
    static QString headers(const ShownWindow &shown)
    {
        QMap<double, QString> titles;
        for (const QQuickItem *header : shown.items("sectionTitle"))
            titles.insert(header->mapToScene(QPointF()).y(), header->property("text").toString());
        return QStringList(titles.values()).join(u'|');
    }
};

QTEST_MAIN(EarthquakeListViewTest)
#include "EarthquakeListViewTest.moc"
