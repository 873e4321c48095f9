// SPDX-License-Identifier: GPL-3.0-or-later
#include "PageGenerator.h"
#include "Support/ShownWindow.h"

#include <QAccessible>
#include <QTest>

using namespace Qt::StringLiterals;

class MainTabViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tabsMakeTheirScreensAnewAndNothingSticksOutOfAPhone()
    {
        ShownWindow shown;
        shown.enqueuePage(PageGenerator(3).ordinary(40, shown.world.clock.now()));
        QVERIFY(shown.showTabs(size));
        QCOMPARE(shown.world.userDefaults.values.value(u"settings.hasAskedNotifPermission"_s), true);
        const QPointer<QQuickItem> list = shown.item("refreshButton");
        for (const QString &tab : {u"Sismos"_s, u"Mapa"_s, u"Estadísticas"_s}) {
            tabs(shown).value(tab)->forceActiveFocus();
            shown.press(Qt::Key_Space);
            QCOMPARE(shown.textOf("pageTitle"), tab);
            QCOMPARE(tabs(shown).size(), 3);
            for (const auto &[name, item] : tabs(shown).asKeyValueRange()) {
                const QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(item);
                QCOMPARE(reader->role(), QAccessible::PageTab);
                QCOMPARE(bool(reader->state().selected), name == tab);
            }
            for (const QQuickItem *item : shown.itemsOf("QQuickItem")) {
                const QRectF place = sceneRect(item);
                const bool isRead = item->inherits("QQuickText") || item->inherits("PressableItem");
                if (isRead && place.width() > 0)
                    QVERIFY2(place.left() >= 0 && place.right() <= size.width(),
                             qUtf8Printable(item->property("text").toString()));
            }
            if (tab == u"Mapa")
                QVERIFY(!sceneRect(shown.item("scaleBar")).intersects(sceneRect(shown.item("mapCredit"))));
            QCOMPARE(faultsOfItems(shown.window()), QStringList());
        }
        QVERIFY(!list);
        // The map refreshes when it appears, as the list does: one repository serves both.
        QCOMPARE(shown.world.urlSession.requests.size(), size_t(2));
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
