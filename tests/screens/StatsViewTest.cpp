// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/ModelContext.h"
#include "Support/ShownWindow.h"
#include "iOS/Stats/ClusterModel.h"
#include "macOS/NavigationState.h"

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

namespace {
QString colorOf(QQuickItem *item, const QString &childName)
{
    const QQuickItem *child = item->findChild<QQuickItem *>(childName);
    return child ? child->property("color").value<QColor>().name() : QString();
}

ClusterStat zone(const char *id, qint64 count)
{
    return {QString::fromLatin1(id), QStringLiteral("name"), count, 1.0, 28.0, -16.5};
}

struct Event
{
    std::chrono::milliseconds ago;
    double magnitude;
    double depth;
};

/// The main window on the statistics of these events.
struct Stats : ShownWindow
{
    void store(const std::vector<Event> &events)
    {
        ModelContext &context = container.mainContext();
        for (const Event &event : events)
            context.insert(Earthquake(QString::number(++number), world.clock.now() - event.ago, 27.9, -16.6,
                                      event.depth, event.magnitude, QStringLiteral("mbLg"), std::nullopt,
                                      QStringLiteral("W FRONTERA.IHI")));
        context.save();
    }

    bool open(const std::vector<Event> &events = {})
    {
        store(events);
        NavigationState::shared().select(QStringLiteral("stats"));
        return show();
    }

    int number = 0;
};
}

class StatsViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void emptyStoreSaysSo()
    {
        Stats shown;
        QVERIFY(shown.open());
        QVERIFY(shown.named("Sin datos. Las estadísticas aparecerán cuando haya terremotos registrados."));
    }

    void oldEventsLeaveTheRecentFiguresBlank()
    {
        Stats shown;
        QVERIFY(shown.open({{40 * 24h, 4.2, 12.0}}));
        QQuickItem *lastHour = shown.named("Última hora: 0");
        QVERIFY(lastHour);
        QCOMPARE(colorOf(lastHour, QStringLiteral("count")), QStringLiteral("#4a5e6c"));
        QQuickItem *none = shown.item("none");
        QVERIFY(none);
        QCOMPARE(none->property("color").value<QColor>().name(), QStringLiteral("#74858f"));
        QVERIFY(shown.named("Moderado"));
        QVERIFY(shown.named("28.0° N  16.5° O"));
        QCOMPARE(faultsOfItems(shown.window()), QStringList());
    }

    void figuresFollowTheStoreAndNotTheClock()
    {
        Stats shown;
        QVERIFY(shown.open({{30min, 1.0, 10.0}}));
        QQuickItem *lastHour = shown.named("Última hora: 1");
        QVERIFY(lastHour);
        QCOMPARE(colorOf(lastHour, QStringLiteral("count")), QStringLiteral("#1a2228"));
        shown.pass(2h);
        QVERIFY(shown.named("Última hora: 1"));
        shown.store({{0min, 2.0, 80.0}});
        shown.settle();
        QVERIFY(shown.named("Última hora: 1"));
        QVERIFY(shown.named("Últimas 24h: 2"));
        NavigationState::shared().select(QStringLiteral("historico"));
        shown.pass(2h);
        NavigationState::shared().select(QStringLiteral("stats"));
        shown.settle();
        QVERIFY(shown.named("Última hora: 0"));
    }

    void barsAreAsLongAsTheirShares()
    {
        Stats shown;
        QVERIFY(shown.open({{1h, 1.0, 10.0}, {2h, 1.9, 29.9}, {3h, 2.0, 30.0}}));
        QStringList bars;
        for (QQuickItem *bar : shown.items("bar"))
            bars.append(
                QStringLiteral("%1 %2 = %3")
                    .arg(bar->property("name").toString())
                    .arg(bar->findChild<QQuickItem *>(QStringLiteral("fill"))->width() / bar->width(), 0, 'f', 2)
                    .arg(QAccessible::queryAccessibleInterface(bar)->text(QAccessible::Description)));
        QCOMPARE(bars.join(u'|'),
                 QStringLiteral("Micro 1.00 = 100 %|Leve 0.50 = 50 %|Moderado 0.00 = 0 %|"
                                "Fuerte 0.00 = 0 %|Muy Fuerte 0.00 = 0 %|Superficial 0.67 = 67 %|"
                                "Intermedio 0.33 = 33 %|Profundo 0.00 = 0 %"));
    }

    void barsGlideToNewShares()
    {
        Stats shown;
        QVERIFY(shown.open({{1h, 1.0, 10.0}}));
        QQuickItem *fill = shown.items("fill").constLast();
        QCOMPARE(fill->width(), 0.0);
        const double whole = fill->parentItem()->width();
        shown.store({{1h, 1.0, 80.0}});
        // The loop has not turned since: what changed has begun to move and has not moved yet.
        QCOMPARE(fill->width(), 0.0);
        QTRY_COMPARE(fill->width(), whole / 2);
    }

    void zonesMoveTheirRows()
    {
        ClusterModel model;
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QSignalSpy inserted(&model, &ClusterModel::rowsInserted);
        QSignalSpy moved(&model, &ClusterModel::rowsMoved);
        QSignalSpy removed(&model, &ClusterModel::rowsRemoved);
        const auto changes = [&] {
            QString text = QStringLiteral("+%1 ~%2 -%3").arg(inserted.count()).arg(moved.count()).arg(removed.count());
            inserted.clear();
            moved.clear();
            removed.clear();
            return text;
        };
        model.setClusters({zone("a", 3), zone("b", 2), zone("c", 1)});
        QCOMPARE(changes(), QStringLiteral("+3 ~0 -0"));
        model.setClusters({zone("c", 4), zone("a", 3), zone("b", 2)});
        QCOMPARE(changes(), QStringLiteral("+0 ~1 -0"));
        model.setClusters({zone("c", 4), zone("d", 4), zone("b", 2)});
        QCOMPARE(changes(), QStringLiteral("+1 ~0 -1"));
        QCOMPARE(model.index(1).data(ClusterModel::CountRole).toInt(), 4);
        QCOMPARE(model.index(1).data(ClusterModel::RankRole).toInt(), 2);
        model.setClusters({});
        QCOMPARE(changes(), QStringLiteral("+0 ~0 -3"));
    }

    void informationStaysUntilDismissed()
    {
        ShownWindow shown;
        QVERIFY(shown.show({480, 720}));
        const QString intro = QStringLiteral("www.ign.es");
        QVERIFY(!shown.named(intro));
        shown.press(Qt::Key_I, Qt::ControlModifier);
        QVERIFY(shown.named(intro));
        shown.press(Qt::Key_I, Qt::ControlModifier);
        QVERIFY(shown.named(intro));
        QVERIFY(faultsOfItems(shown.window()).isEmpty());
        shown.press(Qt::Key_Escape);
        QTRY_VERIFY(!shown.named(intro));
        NotificationCenter::defaultCenter().post(NotificationName::openInfo);
        shown.settle();
        QVERIFY(shown.named(intro));
        shown.click(shown.named("Cerrar"));
        QTRY_VERIFY(!shown.named(intro));
    }

    void informationIsReadByTheKeyboardInANarrowWindow()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        shown.press(Qt::Key_I, Qt::ControlModifier);
        QQuickItem *card = shown.named(
            "Muy Fuerte, ≥ 7.0. Puede causar destrucción significativa. Sigue las recomendaciones de seguridad, busca "
            "un lugar seguro y mantente alerta.");
        QVERIFY(card);
        const double wideHeight = card->height();
        shown.window().resize(400, 600);
        QTRY_VERIFY(card->height() > wideHeight);
        const QQuickItem *host = shown.named("www.ign.es");
        QVERIFY(host->mapToScene({0, 0}).y() > 600);
        shown.press(Qt::Key_End);
        QVERIFY(host->mapToScene({0, host->height()}).y() < 600);
    }
};

QTEST_MAIN(StatsViewTest)
#include "StatsViewTest.moc"
