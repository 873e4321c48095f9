// SPDX-License-Identifier: GPL-3.0-or-later
#include "PageGenerator.h"
#include "Support/ShownWindow.h"

#include <QAccessible>
#include <QTest>

class MainTabViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tabsMakeTheirScreensAnew()
    {
        ShownWindow shown;
        QVERIFY(shown.showTabs(size));
        QCOMPARE(shown.textOf("pageTitle"), QStringLiteral("Sismos"));
        const QPointer<QQuickItem> list = shown.item("refreshButton");
        shown.click(shown.named("Mapa"));
        QCOMPARE(shown.textOf("pageTitle"), QStringLiteral("Mapa"));
        QVERIFY(!list);
        // The map refreshes when it appears, as the list does: one repository serves both.
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(2));
        shown.named("Estadísticas")->forceActiveFocus();
        shown.press(Qt::Key_Space);
        QCOMPARE(shown.textOf("pageTitle"), QStringLiteral("Estadísticas"));
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(2));
    }

    void firstLaunchAsksForNotifications()
    {
        ShownWindow shown;
        QVERIFY(shown.showTabs(size));
        QCOMPARE(shown.world.userDefaults.values.value(QStringLiteral("settings.hasAskedNotifPermission")), true);
    }

    void nothingSticksOutOfAPhone_data()
    {
        QTest::addColumn<QString>("tab");
        QTest::newRow("list") << QStringLiteral("Sismos");
        QTest::newRow("map") << QStringLiteral("Mapa");
        QTest::newRow("statistics") << QStringLiteral("Estadísticas");
    }

    void nothingSticksOutOfAPhone()
    {
        QFETCH(QString, tab);
        ShownWindow shown;
        shown.enqueuePage(PageGenerator(3).ordinary(40, shown.world.clock.now()));
        QVERIFY(shown.showTabs(size));
        shown.click(tabs(shown).value(tab));
        QCOMPARE(shown.textOf("pageTitle"), tab);
        for (const auto &[name, item] : tabs(shown).asKeyValueRange()) {
            const QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(item);
            QCOMPARE(reader->role(), QAccessible::PageTab);
            QCOMPARE(bool(reader->state().selected), name == tab);
        }
        QStringList outside;
        for (const QQuickItem *item : shown.itemsOf("QQuickItem")) {
            const QRectF place = sceneRect(item);
            const bool isRead = item->inherits("QQuickText") || item->inherits("PressableItem");
            if (isRead && place.width() > 0 && (place.left() < 0 || place.right() > size.width()))
                outside.append(item->property("text").toString());
        }
        QCOMPARE(outside, QStringList());
        if (tab == QLatin1String("Mapa"))
            QVERIFY(!sceneRect(shown.item("scaleBar")).intersects(sceneRect(shown.item("mapCredit"))));
        QCOMPARE(tabs(shown).size(), 3);
        QCOMPARE(faultsOfItems(shown.window()), QStringList());
    }

private:
    static constexpr QSize size{360, 640};

    static QRectF sceneRect(const QQuickItem *item) { return item->mapRectToScene(item->boundingRect()); }

    /// The tabs below the screens, by what they say.
    static QMap<QString, QQuickItem *> tabs(const ShownWindow &shown)
    {
        QMap<QString, QQuickItem *> found;
        for (QQuickItem *item : shown.itemsOf("PressableItem"))
            if (item->property("isSelected").isValid())
                found.insert(item->property("text").toString(), item);
        return found;
    }
};

QTEST_MAIN(MainTabViewTest)
#include "MainTabViewTest.moc"
