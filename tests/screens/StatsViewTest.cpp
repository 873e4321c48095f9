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
}

class StatsViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void emptyStoreSaysSo()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        NavigationState::shared().select(QStringLiteral("stats"));
        shown.settle();
        QVERIFY(
            shown.named(QStringLiteral("Sin datos. Las estadísticas aparecerán cuando haya terremotos registrados.")));
    }

    void oldEventsLeaveTheRecentFiguresBlank()
    {
        ShownWindow shown;
        store(shown, {{40 * 24h, 4.2, 12.0}});
        QVERIFY(shown.show());
        NavigationState::shared().select(QStringLiteral("stats"));
        shown.settle();
        QQuickItem *lastHour = shown.named(QStringLiteral("Última hora: 0"));
        QVERIFY(lastHour);
        QCOMPARE(colorOf(lastHour, QStringLiteral("count")), QStringLiteral("#4a5e6c"));
        QQuickItem *none = shown.item(QStringLiteral("none"));
        QVERIFY(none);
        QCOMPARE(none->property("color").value<QColor>().name(), QStringLiteral("#74858f"));
        QVERIFY(shown.named(QStringLiteral("Moderado")));
        QVERIFY(shown.named(QStringLiteral("28.0° N  16.5° O")));
        QVERIFY2(faultsOfItems(shown.window()).isEmpty(), qPrintable(faultsOfItems(shown.window()).join(u'\n')));
    }

    void figuresFollowTheStoreAndNotTheClock()
    {
        ShownWindow shown;
        store(shown, {{30min, 1.0, 10.0}});
        QVERIFY(shown.show());
        NavigationState::shared().select(QStringLiteral("stats"));
        shown.settle();
        QQuickItem *lastHour = shown.named(QStringLiteral("Última hora: 1"));
        QVERIFY(lastHour);
        QCOMPARE(colorOf(lastHour, QStringLiteral("count")), QStringLiteral("#1a2228"));
        shown.pass(2h);
        QVERIFY(shown.named(QStringLiteral("Última hora: 1")));
        store(shown, {{0min, 2.0, 80.0}});
        shown.settle();
        QVERIFY(shown.named(QStringLiteral("Última hora: 1")));
        QVERIFY(shown.named(QStringLiteral("Últimas 24h: 2")));
        NavigationState::shared().select(QStringLiteral("historico"));
        shown.pass(2h);
        NavigationState::shared().select(QStringLiteral("stats"));
        shown.settle();
        QVERIFY(shown.named(QStringLiteral("Última hora: 0")));
    }

    void barsAreAsLongAsTheirShares_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<double>("share");
        QTest::newRow("fullest category") << "Micro" << 1.0;
        QTest::newRow("half of the fullest") << "Leve" << 0.5;
        QTest::newRow("empty category") << "Muy Fuerte" << 0.0;
        QTest::newRow("two of three") << "Superficial" << 2.0 / 3;
        QTest::newRow("one of three") << "Intermedio" << 1.0 / 3;
        QTest::newRow("empty band") << "Profundo" << 0.0;
    }

    void barsAreAsLongAsTheirShares()
    {
        QFETCH(QString, name);
        QFETCH(double, share);
        ShownWindow shown;
        store(shown, {{1h, 1.0, 10.0}, {2h, 1.9, 29.9}, {3h, 2.0, 30.0}});
        QVERIFY(shown.show());
        NavigationState::shared().select(QStringLiteral("stats"));
        shown.settle();
        QQuickItem *bar = nullptr;
        for (QQuickItem *candidate : shown.items(QStringLiteral("bar")))
            if (candidate->property("name").toString() == name)
                bar = candidate;
        QVERIFY(bar);
        QCOMPARE(bar->findChild<QQuickItem *>(QStringLiteral("fill"))->width(), bar->width() * share);
        const QString spoken = QString::number(std::lround(share * 100)) + QStringLiteral(" %");
        QCOMPARE(QAccessible::queryAccessibleInterface(bar)->text(QAccessible::Description), spoken);
    }

    void barsGlideToNewShares()
    {
        ShownWindow shown;
        store(shown, {{1h, 1.0, 10.0}});
        QVERIFY(shown.show());
        NavigationState::shared().select(QStringLiteral("stats"));
        shown.settle();
        QQuickItem *fill = shown.items(QStringLiteral("fill")).constLast();
        QCOMPARE(fill->width(), 0.0);
        const double whole = fill->parentItem()->width();
        store(shown, {{1h, 1.0, 80.0}});
        // The loop has not turned since: what changed has begun to move and has not moved yet.
        QCOMPARE(fill->width(), 0.0);
        QTRY_COMPARE(fill->width(), whole / 2);
    }

    void namesFromOutsideArePlain()
    {
        ShownWindow shown;
        store(shown, {{1min, 3.0, 10.0}}, QStringLiteral("<b>&amp;\n</b>"));
        QVERIFY(shown.show());
        NavigationState::shared().select(QStringLiteral("stats"));
        shown.settle();
        QVERIFY(shown.named(QStringLiteral("<b>&amp; </b>")));
        QVERIFY(faultsOfItems(shown.window()).isEmpty());
        QVERIFY(shown.warnings().isEmpty());
    }

    void zonesMoveTheirRows()
    {
        ClusterModel model;
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QSignalSpy inserted(&model, &ClusterModel::rowsInserted);
        QSignalSpy moved(&model, &ClusterModel::rowsMoved);
        QSignalSpy removed(&model, &ClusterModel::rowsRemoved);
        const auto changes = [&] {
            const QString text =
                QStringLiteral("+%1 ~%2 -%3").arg(inserted.count()).arg(moved.count()).arg(removed.count());
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
        shown.click(shown.named(QStringLiteral("Cerrar")));
        QTRY_VERIFY(!shown.named(intro));
    }

    void informationIsReadByTheKeyboardInANarrowWindow()
    {
        ShownWindow shown;
        QVERIFY(shown.show());
        shown.press(Qt::Key_I, Qt::ControlModifier);
        QQuickItem *card = shown.named(QStringLiteral(
            "Muy Fuerte, ≥ 7.0. Puede causar destrucción significativa. Sigue las recomendaciones de seguridad, busca "
            "un lugar seguro y mantente alerta."));
        QVERIFY(card);
        const double wideHeight = card->height();
        shown.window().resize(400, 600);
        QTRY_VERIFY(card->height() > wideHeight);
        const QQuickItem *host = shown.named(QStringLiteral("www.ign.es"));
        QVERIFY(host->mapToScene({0, 0}).y() > 600);
        shown.press(Qt::Key_End);
        QVERIFY(host->mapToScene({0, host->height()}).y() < 600);
    }

private:
    struct Event
    {
        std::chrono::milliseconds ago;
        double magnitude;
        double depth;
    };

    static void store(ShownWindow &shown, const std::vector<Event> &events,
                      const QString &location = QStringLiteral("W FRONTERA.IHI"))
    {
        static int number = 0;
        ModelContext &context = shown.container.mainContext();
        for (const Event &event : events)
            context.insert(Earthquake(QStringLiteral("es%1").arg(++number), shown.world.clock.now() - event.ago, 27.9,
                                      -16.6, event.depth, event.magnitude, QStringLiteral("mbLg"), std::nullopt,
                                      location));
        context.save();
    }
};

QTEST_MAIN(StatsViewTest)
#include "StatsViewTest.moc"
