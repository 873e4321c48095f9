// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/ModelContext.h"
#include "Support/ShownWindow.h"
#include "iOS/Stats/ClusterModel.h"
#include "macOS/MacMainScreen.h"
#include "macOS/NavigationState.h"

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {
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
                                      event.depth, event.magnitude, u"mbLg"_s, std::nullopt, u"W FRONTERA.IHI"_s));
        context.save();
    }

    bool open(const std::vector<Event> &events = {})
    {
        store(events);
        NavigationState::shared().select(u"stats"_s);
        return show();
    }

    int number = 0;
};
}

class StatsViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void figuresFollowTheStoreAndNotTheClock()
    {
        Stats shown;
        const auto colorOfLastHour = [&shown](const char *name) {
            const QQuickItem *card = shown.named(name);
            return card ? card->findChild<QQuickItem *>(u"count"_s)->property("color").toString() : QString();
        };
        QVERIFY(shown.open());
        QVERIFY(shown.named("Sin datos. Las estadísticas aparecerán cuando haya terremotos registrados."));
        // Old events leave the recent figures blank.
        shown.store({{40 * 24h, 4.2, 12.0}});
        shown.settle();
        QCOMPARE(colorOfLastHour("Última hora: 0"), u"#4a5e6c"_s);
        QCOMPARE(shown.item("none")->property("color").toString(), u"#74858f"_s);
        QVERIFY(shown.named("Moderado"));
        QVERIFY(shown.named("1. W FRONTERA.IHI, 28.0° N  16.5° O, 1, Ø 4.2"));
        QCOMPARE(faultsOfItems(shown.window()), QStringList());

        shown.store({{30min, 1.0, 10.0}});
        shown.settle();
        QCOMPARE(colorOfLastHour("Última hora: 1"), u"#1a2228"_s);
        shown.pass(2h);
        QVERIFY(shown.named("Última hora: 1"));
        shown.store({{0min, 2.0, 80.0}});
        shown.settle();
        QVERIFY(shown.named("Última hora: 1"));
        QVERIFY(shown.named("Últimas 24h: 2"));
        NavigationState::shared().select(u"historico"_s);
        shown.pass(2h);
        NavigationState::shared().select(u"stats"_s);
        shown.settle();
        QVERIFY(shown.named("Última hora: 0"));
    }

    void barsAreAsLongAsTheirShares()
    {
        Stats shown;
        QVERIFY(shown.open({{1h, 1.0, 10.0}, {2h, 1.9, 29.9}, {3h, 2.0, 30.0}}));
        QStringList bars;
        for (QQuickItem *bar : shown.items("bar"))
            bars.append(u"%1 %2 = %3"_s.arg(bar->property("name").toString())
                            .arg(bar->findChild<QQuickItem *>(u"fill"_s)->width() / bar->width(), 0, 'f', 2)
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
        const QQuickItem *fill = shown.items("fill").constLast();
        shown.store({{1h, 1.0, 80.0}});
        QVERIFY2(fill->width() == 0, "what changed has moved before the loop has turned");
        QTRY_COMPARE(fill->width(), fill->parentItem()->width() / 2);
    }

    void zonesMoveTheirRows()
    {
        ClusterModel model;
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        const auto zone = [](const QString &id, qint64 count) { return ClusterStat{id, {}, count, 1.0, 28.0, -16.5}; };
        model.setClusters({zone(u"a"_s, 3), zone(u"b"_s, 2), zone(u"c"_s, 1)});
        const QPersistentModelIndex c(model.index(2));
        model.setClusters({zone(u"c"_s, 5), zone(u"d"_s, 4), zone(u"b"_s, 2)});
        QCOMPARE(c.row(), 0);
        QCOMPARE(model.rowCount(), 3);
        QCOMPARE(model.index(1).data(ClusterModel::CountRole).toInt(), 4);
        QCOMPARE(model.index(1).data(ClusterModel::RankRole).toInt(), 2);
    }

    void informationIsReadByTheKeyboardAndStaysUntilDismissed()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        const auto host = [&shown] { return shown.named("www.ign.es"); };
        QVERIFY(!host());
        shown.press(Qt::Key_I, Qt::ControlModifier);
        const QQuickItem *card = shown.named(
            "Muy Fuerte, ≥ 7.0. Puede causar destrucción significativa. Sigue las recomendaciones de seguridad, busca "
            "un lugar seguro y mantente alerta.");
        QVERIFY(card);
        const double wideHeight = card->height();
        shown.window().resize(400, 600);
        QTRY_VERIFY(card->height() > wideHeight);
        QVERIFY(host()->mapToScene({0, 0}).y() > 600);
        shown.press(Qt::Key_End);
        QVERIFY(host()->mapToScene({0, host()->height()}).y() < 600);
        QCOMPARE(faultsOfItems(shown.window()), QStringList());
        // The menu of another window opens it and does not close it.
        shown.world.notificationCenter.post(NotificationName::openInfo);
        QVERIFY(shown.window().findChild<MacMainScreen *>()->property("showInfoSheet").toBool());
        shown.press(Qt::Key_Escape);
        QTRY_VERIFY(!host());
        shown.press(Qt::Key_I, Qt::ControlModifier);
        shown.click(shown.named("Cerrar"));
        QTRY_VERIFY(!host());
    }
};

QTEST_MAIN(StatsViewTest)
#include "StatsViewTest.moc"
