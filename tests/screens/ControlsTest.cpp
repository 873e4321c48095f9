// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/ShownWindow.h"
#include "Support/Table.h"
#include "iOS/Shared/PickerModel.h"

#include <QAccessible>
#include <QPointingDevice>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <memory>

/// The shared controls in a window, driven as their user drives them.
class ControlsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Qt tells some roles and names otherwise while nobody listens.
    void initTestCase() { QAccessible::setActive(true); }

    void init()
    {
        m_world = std::make_unique<World>();
        m_engine = std::make_unique<QQmlEngine>();
        m_engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
        connect(m_engine.get(), &QQmlEngine::warnings, this, [](const QList<QQmlError> &warnings) {
            for (const QQmlError &warning : warnings)
                QTest::qFail(qPrintable(warning.toString()), __FILE__, __LINE__);
        });
        m_choices = std::make_unique<PickerModel>(
            QList<PickerChoice>{{QStringLiteral("50 km")}, {QStringLiteral("100 km")}, {QStringLiteral("200 km")}},
            nullptr);
        m_engine->rootContext()->setContextProperty(QStringLiteral("testChoices"), m_choices.get());
        QQmlComponent window(m_engine.get());
        window.setData("import QtQuick.Controls.Basic\nApplicationWindow { width: 600; height: 500; visible: true }",
                       {});
        m_view.reset(qobject_cast<QQuickWindow *>(window.create()));
        QVERIFY2(m_view, qPrintable(window.errorString()));
        QVERIFY(QTest::qWaitForWindowActive(m_view.get()));
    }

    void cleanup()
    {
        m_item.reset();
        m_view.reset();
        m_engine.reset();
        m_choices.reset();
        m_world.reset();
    }

    void everyWayToPressPressesOnce_data()
    {
        Table<QByteArray> row;
        row.unnamed("PlainButton { text: 'A' }");
        row.unnamed("BorderedButton { text: 'A' }");
        row.unnamed("ProminentButton { text: 'A' }");
        row.unnamed("IconButton { text: 'A'; iconName: 'gear' }");
        row.unnamed("ToggleSwitch { text: 'A'; on: false }");
    }

    void everyWayToPressPressesOnce()
    {
        const auto [control] = Table<QByteArray>::current();
        QQuickItem *item = show(control);
        QSignalSpy clicked(item, SIGNAL(clicked()));
        click(item);
        QCOMPARE(clicked.count(), 1);
        QTest::keyClick(m_view.get(), Qt::Key_Space);
        QCOMPARE(clicked.count(), 2);
        QTest::keyClick(m_view.get(), Qt::Key_Return);
        QCOMPARE(clicked.count(), 3);
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(item);
        QCOMPARE(accessible->text(QAccessible::Name), QStringLiteral("A"));
        accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(clicked.count(), 4);
        item->setEnabled(false);
        click(item);
        accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(clicked.count(), 4);
    }

    void aReaderHearsWhatAControlIs_data()
    {
        Table<QAccessible::Role, QString, QByteArray> row;
        row("BorderedButton { text: 'A' }", QAccessible::Button, "A", "focusable");
        row("ToggleSwitch { text: 'A'; on: true }", QAccessible::CheckBox, "A", "focusable checkable checked");
        row("ToggleSwitch { text: 'A'; on: false }", QAccessible::CheckBox, "A", "focusable checkable");
        row("FilterRow { text: 'A'; isChosen: true }", QAccessible::RadioButton, "A", "focusable checkable checked");
        row("FilterRow { text: 'A'; isChosen: false }", QAccessible::RadioButton, "A", "focusable checkable");
        row("SegmentedControl { name: 'A'; choices: testChoices; current: 1 }", QAccessible::PageTabList, "A",
            "focusable");
        row("Segment { text: 'A'; index: 0; chosen: true }", QAccessible::RadioButton, "A",
            "focusable checkable checked");
        row("Picker { text: 'A'; choices: testChoices; current: 1 }", QAccessible::ComboBox, "A: 100 km", "focusable");
        row("PickerMenuRow { text: 'A'; index: 0; dot: 'red'; ticked: true }", QAccessible::MenuItem, "A",
            "focusable checkable checked");
        row("DateField { text: 'A'; date: new Date(2021, 8, 19, 12) }", QAccessible::ComboBox, "A: Sep 19, 2021",
            "focusable");
        row("SearchField { placeholderText: 'A' }", QAccessible::EditableText, "A", "focusable");
        row("ScrollPage { name: 'A' }", QAccessible::Pane, "A", "");
        row("ActionMenuItem { text: 'A'; hasTick: true; chosen: true }", QAccessible::MenuItem, "A",
            "focusable checkable checked");
        row("EarthquakeListRow { magnitude: 2; location: ''; dateText: ''; depthText: ''; sentence: 'A'; isLink: true; "
            "isChosen: true; isFocused: false; showsDivider: false }",
            QAccessible::ListItem, "A", "selectable selected");
    }

    void aReaderHearsWhatAControlIs()
    {
        const auto [role, name, expected] = Table<QAccessible::Role, QString, QByteArray>::current();
        const QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(show(QTest::currentDataTag()));
        QCOMPARE(reader->role(), role);
        QCOMPARE(reader->text(QAccessible::Name), name);
        const QAccessible::State state = reader->state();
        QByteArrayList states;
        for (const auto &[isSo, what] : {std::pair(state.focusable, "focusable"),
                                         {state.selectable, "selectable"},
                                         {state.selected, "selected"},
                                         {state.checkable, "checkable"},
                                         {state.checked, "checked"}})
            if (isSo)
                states.append(what);
        QCOMPARE(states.join(' '), expected);
    }

    void aPressCountsWhereItIsLetGo()
    {
        QQuickItem *row = show("Row { BorderedButton { text: 'A' } BorderedButton { text: 'B' } }");
        QQuickItem *button = row->childItems().at(0);
        QSignalSpy clicked(button, SIGNAL(clicked()));
        const QPoint inside = middleOf(button);
        const auto isPressed = [&] { return button->property("pressed").toBool(); };
        QTest::mousePress(m_view.get(), Qt::LeftButton, {}, inside);
        QVERIFY(isPressed());
        QTest::mouseMove(m_view.get(), inside + QPoint(0, 100));
        QVERIFY(!isPressed());
        QTest::mouseRelease(m_view.get(), Qt::LeftButton, {}, inside + QPoint(0, 100));
        QTest::keyPress(m_view.get(), Qt::Key_Space);
        QVERIFY(isPressed());
        QTest::keyClick(m_view.get(), Qt::Key_Tab);
        QVERIFY(!isPressed());
        QTest::keyRelease(m_view.get(), Qt::Key_Space);
        QTest::mousePress(m_view.get(), Qt::LeftButton, {}, inside);
        button->setEnabled(false);
        QTest::mouseRelease(m_view.get(), Qt::LeftButton, {}, inside);
        QCOMPARE(clicked.count(), 0);
        button->setEnabled(true);
        QTest::mouseDClick(m_view.get(), Qt::LeftButton, {}, inside);
        QCOMPARE(clicked.count(), 2);
    }

    void onlyTheKeyboardShowsTheFocusRing()
    {
        QQuickItem *row = show("Row { BorderedButton { text: 'A' } BorderedButton { text: 'B' } }");
        QQuickItem *first = row->childItems().at(0);
        QQuickItem *second = row->childItems().at(1);
        const auto hasRing = [](const QQuickItem *button) {
            const auto children = button->findChildren<QQuickItem *>();
            return std::any_of(children.begin(), children.end(), [](const QQuickItem *child) {
                return child->property("around").isValid() && child->isVisible() && child->opacity() > 0.9;
            });
        };
        click(first);
        QVERIFY(first->hasActiveFocus());
        QVERIFY(!hasRing(first));
        QTest::keyClick(m_view.get(), Qt::Key_Tab);
        QVERIFY(second->hasActiveFocus());
        QTRY_VERIFY(hasRing(second));
        QVERIFY(!hasRing(first));
        // The window goes to the back and comes again.
        QFocusEvent away(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
        QCoreApplication::sendEvent(m_view.get(), &away);
        QTRY_VERIFY(!hasRing(second));
        QFocusEvent back(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
        QCoreApplication::sendEvent(m_view.get(), &back);
        QTRY_VERIFY(hasRing(second));
    }

    void aRefusedWriteLeavesTheOldValueOnShow()
    {
        QQuickItem *item = show("ToggleSwitch { text: 'A'; on: false }");
        QSignalSpy requested(item, SIGNAL(requested(bool)));
        click(item);
        click(item);
        QCOMPARE(requested.count(), 2);
        QCOMPARE(requested.at(0).at(0).toBool(), true);
        QCOMPARE(requested.at(1).at(0).toBool(), true);
        QCOMPARE(item->property("on").toBool(), false);
    }

    void segmentsAskForTheirNeighbours()
    {
        QQuickItem *item = show("SegmentedControl { name: 'A'; choices: testChoices; current: 1 }");
        QSignalSpy requested(item, SIGNAL(requested(int)));
        item->forceActiveFocus(Qt::TabFocusReason);
        press({Qt::Key_Left, Qt::Key_Right});
        QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, QPoint(int(item->width()) - 20, 15));
        QCOMPARE(rows(requested), QStringLiteral("0 2 2"));
        item->setProperty("current", 2);
        QTest::keyClick(m_view.get(), Qt::Key_Right);
        QCOMPARE(requested.count(), 3);
    }

    void aPickerIsWorkedByKeys()
    {
        QQuickItem *item = show("Picker { y: 200; text: 'A'; choices: testChoices; current: 1 }");
        QSignalSpy requested(item, SIGNAL(requested(int)));
        item->forceActiveFocus(Qt::TabFocusReason);
        press({Qt::Key_Space, Qt::Key_Down, Qt::Key_Return});
        QTRY_VERIFY(item->hasActiveFocus());
        press({Qt::Key_Down, Qt::Key_Home, Qt::Key_Return});
        QCOMPARE(rows(requested), QStringLiteral("2 0"));
        QCOMPARE(item->property("current").toInt(), 1);
        QTRY_VERIFY(item->hasActiveFocus());
        press({Qt::Key_Space, Qt::Key_Escape});
        QCOMPARE(requested.count(), 2);
        QCOMPARE(item->property("currentText").toString(), QStringLiteral("100 km"));
        m_choices->setChoices({{QStringLiteral("1 mi")}, {QStringLiteral("2 mi")}});
        QCOMPARE(item->property("currentText").toString(), QStringLiteral("2 mi"));
    }

    void aMenuIsWorkedByKeysAndByAScreenReader()
    {
        QQuickItem *item = show("Item { ActionMenu { objectName: 'menu'; title: 'M'; ActionMenuItem { text: 'A' } "
                                "ActionMenuDivider {} ActionMenuItem { text: 'A long entry'; "
                                "shortcutText: 'Ctrl+Shift+S' } } }");
        auto *menu = item->findChild<QObject *>(QStringLiteral("menu"));
        QQuickItem *second = nullptr;
        QMetaObject::invokeMethod(menu, "itemAt", Q_RETURN_ARG(QQuickItem *, second), Q_ARG(int, 2));
        QVERIFY(second);
        QSignalSpy triggered(second, SIGNAL(triggered()));
        QMetaObject::invokeMethod(menu, "open");
        QTRY_VERIFY(menu->property("opened").toBool());
        QVERIFY(second->width() >= second->implicitWidth());
        press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Return});
        QCOMPARE(triggered.count(), 1);
        QTRY_VERIFY(!menu->property("visible").toBool());
        QMetaObject::invokeMethod(menu, "open");
        QTRY_VERIFY(menu->property("opened").toBool());
        QAccessible::queryAccessibleInterface(second)->actionInterface()->doAction(
            QAccessibleActionInterface::pressAction());
        QCOMPARE(triggered.count(), 2);
        QTRY_VERIFY(!menu->property("visible").toBool());
    }

    void aPressOutsideAPopoverOnlyClosesIt()
    {
        QQuickItem *item =
            show("BorderedButton { text: 'A'; Popover { objectName: 'popover'; name: 'P'; contentItem: Item { "
                 "implicitWidth: 100; implicitHeight: 50 } } }");
        QSignalSpy clicked(item, SIGNAL(clicked()));
        auto *popover = item->findChild<QObject *>(QStringLiteral("popover"));
        QMetaObject::invokeMethod(popover, "open");
        QTRY_VERIFY(popover->property("opened").toBool());
        click(item);
        QTRY_VERIFY(!popover->property("visible").toBool());
        QCOMPARE(clicked.count(), 0);
        QMetaObject::invokeMethod(popover, "open");
        QTRY_VERIFY(popover->property("opened").toBool());
        QTest::keyClick(m_view.get(), Qt::Key_Escape);
        QTRY_VERIFY(!popover->property("visible").toBool());
    }

    void escapeAsksASheetToClose()
    {
        QQuickItem *item = show("Item { Sheet { objectName: 'sheet'; title: 'S'; visible: true; buttons: "
                                "BorderedButton { text: 'A' } } }");
        auto *sheet = item->findChild<QObject *>(QStringLiteral("sheet"));
        QSignalSpy asked(sheet, SIGNAL(dismissRequested()));
        QTRY_VERIFY(sheet->property("opened").toBool());
        QTest::keyClick(m_view.get(), Qt::Key_Escape);
        QCOMPARE(asked.count(), 1);
        QVERIFY(sheet->property("visible").toBool());
        QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, QPoint(3, 3));
        QCOMPARE(asked.count(), 1);
        QVERIFY(sheet->property("visible").toBool());
    }

    void escapeEmptiesASearchAndThenLeaves()
    {
        QQuickItem *item = show("SearchField { placeholderText: 'A' }");
        QSignalSpy left(item, SIGNAL(leaveRequested()));
        QSignalSpy edited(item, SIGNAL(textEdited()));
        item->forceActiveFocus();
        type("mazo");
        QTest::keyClick(m_view.get(), Qt::Key_Escape);
        QCOMPARE(item->property("text").toString(), QString());
        QCOMPARE(edited.count(), 5);
        QCOMPARE(left.count(), 0);
        QTest::keyClick(m_view.get(), Qt::Key_Escape);
        QCOMPARE(left.count(), 1);
        type("a");
        QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, QPoint(int(item->width()) - 15, 16));
        QCOMPARE(item->property("text").toString(), QString());
        QVERIFY(item->hasActiveFocus());
    }

    void daysAreChosenByKeysAndTyped()
    {
        QQuickItem *item =
            show("DateField { text: 'A'; date: new Date(2021, 8, 19, 12); minimum: new Date(2021, 8, 3, 12) }");
        QSignalSpy requested(item, SIGNAL(requested(QDateTime)));
        item->forceActiveFocus(Qt::TabFocusReason);
        press({Qt::Key_Down, Qt::Key_PageDown, Qt::Key_Left, Qt::Key_Return});
        QCOMPARE(requested.count(), 1);
        QCOMPARE(requested.at(0).at(0).toDateTime(), QDateTime(QDate(2021, 10, 18), QTime(12, 0)));

        QTRY_VERIFY(item->hasActiveFocus());
        type("2021-09-03");
        QTest::keyClick(m_view.get(), Qt::Key_Return);
        QCOMPARE(requested.count(), 2);
        QCOMPARE(requested.at(1).at(0).toDateTime(), QDateTime(QDate(2021, 9, 3), QTime(12, 0)));

        // Nothing at all is given up, not refused.
        type("2");
        press({Qt::Key_Backspace, Qt::Key_Return});
        QVERIFY(item->hasActiveFocus());
        QCOMPARE(requested.count(), 2);
        QCOMPARE(item->property("date").toDateTime(), QDateTime(QDate(2021, 9, 19), QTime(12, 0)));
    }

    void typedDaysThatCannotBeChosenStayInTheField()
    {
        QQuickItem *row =
            show("Row { DateField { text: 'A'; date: new Date(2021, 8, 19, 12) } BorderedButton { text: 'B' } }");
        QQuickItem *item = row->childItems().at(0);
        QSignalSpy requested(item, SIGNAL(requested(QDateTime)));
        auto *entry = item->findChild<QQuickItem *>(QStringLiteral("typedDate"));
        const auto isRefused = [&] { return item->property("isRefused").toBool() && entry->isVisible(); };
        for (const Qt::Key leavesBy : {Qt::Key_Return, Qt::Key_Tab}) {
            item->forceActiveFocus(Qt::TabFocusReason);
            type("2021-09-31");
            QVERIFY(!isRefused());
            QTest::keyClick(m_view.get(), leavesBy);
            QVERIFY(isRefused());
            QCOMPARE(entry->property("text").toString(), QStringLiteral("2021-09-31"));
            QVERIFY(
                QAccessible::queryAccessibleInterface(entry)->text(QAccessible::Description).contains(u"9/19/2021"));
            entry->forceActiveFocus();
            QTest::keyClick(m_view.get(), Qt::Key_Escape);
            QVERIFY(!isRefused());
            QVERIFY(item->hasActiveFocus());
        }
        QCOMPARE(requested.count(), 0);
    }

    void markupFromOutsideStaysText()
    {
        QQuickItem *item = show("OutsideText { width: 100; content: '<b>a</b>\\n<img src=\"http://127.0.0.1:1/\">' }");
        QCOMPARE(item->property("textFormat").toInt(), 0);
        QCOMPARE(item->property("text").toString(), QStringLiteral("<b>a</b> <img src=\"http://127.0.0.1:1/\">"));
        QCOMPARE(item->property("lineCount").toInt(), 1);
        QVERIFY(item->property("truncated").toBool());
    }

    void theThemeFollowsTheDesktopLive()
    {
        QQuickItem *item = show("Rectangle { color: Theme.window; width: Theme.slide }");
        QCOMPARE(item->property("color").value<QColor>(), QColor(0xFCFDFD));
        m_world->appearance.setColorScheme(Appearance::ColorScheme::dark);
        QCOMPARE(item->property("color").value<QColor>(), QColor(0x14181B));
        QCOMPARE(item->width(), 24.0);
        m_world->appearance.setReducedMotion(true);
        QCOMPARE(item->width(), 0.0);
    }

    void spinnersRestWhenNobodyLooksOrMotionIsUnwanted()
    {
        QQuickItem *item = show("Spinner { name: 'A' }");
        const auto isTurning = [item] {
            const auto children = item->findChildren<QObject *>();
            for (const QObject *child : children)
                if (child->inherits("QQmlTimer"))
                    return child->property("running").toBool();
            return false;
        };
        QVERIFY(isTurning());
        m_view->hide();
        QVERIFY(!isTurning());
        m_view->showMinimized();
        QVERIFY(!isTurning());
        m_view->showNormal();
        QTRY_VERIFY(isTurning());
        m_world->appearance.setReducedMotion(true);
        QVERIFY(!isTurning());
    }

    void anIconHasItsTipUntilItIsPressed()
    {
        QQuickItem *item = show("IconButton { text: 'A'; iconName: 'gear'; Component.onCompleted: "
                                "TipTiming.noteShown() }");
        const auto objects = item->findChildren<QObject *>();
        const QObject *tip =
            *std::ranges::find_if(objects, [](QObject *object) { return object->inherits("QQuickToolTip"); });
        QVERIFY(!tip->property("visible").toBool());
        QTest::mouseMove(m_view.get(), middleOf(item));
        QTRY_VERIFY(tip->property("opened").toBool());
        QTest::mousePress(m_view.get(), Qt::LeftButton, {}, middleOf(item));
        QTRY_VERIFY(!tip->property("visible").toBool());
        QTest::mouseRelease(m_view.get(), Qt::LeftButton, {}, middleOf(item));
    }

    void digitsStandInEqualCells()
    {
        const QByteArray control("NumberText { font.family: Theme.fontFamily; font.pixelSize: 20; text: '%1' }");
        const qreal ones = show(QByteArray(control).replace("%1", "11:11"))->implicitWidth();
        QCOMPARE(show(QByteArray(control).replace("%1", "08:48"))->implicitWidth(), ones);
        QVERIFY(show("PlainText { font.pixelSize: 20; text: '11:11' }")->implicitWidth() < ones);
    }

    void everyControlIsPlainAndNamed()
    {
        QQmlComponent component(m_engine.get(), QUrl(QStringLiteral("qrc:/qt/qml/orvalia/Gallery/Gallery.qml")));
        m_item.reset(qobject_cast<QQuickItem *>(component.create()));
        QVERIFY2(m_item, qPrintable(component.errorString()));
        m_item->setParentItem(content());
        QVERIFY(m_item->findChildren<QQuickItem *>().size() > 300);
        QCOMPARE(faultsOfItems(*m_view), QStringList());
    }

    void scrollBarFadesWhereTheUserScrollsByTouch_data()
    {
        Table<int, double> row;
        row("mouse alone", int(QInputDevice::DeviceType::Mouse), 1.0);
        row("touch screen", int(QInputDevice::DeviceType::TouchScreen), 0.0);
        row("touch pad", int(QInputDevice::DeviceType::TouchPad), 0.0);
    }

    void scrollBarFadesWhereTheUserScrollsByTouch()
    {
        const auto [device, opacityAtRest] = Table<int, double>::current();
        const std::unique_ptr<QPointingDevice> pointer(QTest::createTouchDevice(QInputDevice::DeviceType(device)));
        QQuickItem *page = show("ScrollPage { name: 'A'; width: 200; height: 100; Item { width: 1; height: 900 } }");
        const auto opacity = [&] {
            const QList<QQuickItem *> items = page->findChildren<QQuickItem *>();
            const auto bar =
                std::ranges::find_if(items, [](QQuickItem *item) { return item->inherits("QQuickScrollBar"); });
            return (*bar)->property("contentItem").value<QQuickItem *>()->opacity();
        };
        QTRY_COMPARE(opacity(), opacityAtRest);
        const QPoint middle(100, 50);
        QWheelEvent down(middle, m_view->mapToGlobal(middle), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                         Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(m_view.get(), &down);
        QTRY_COMPARE(opacity(), 1.0);
        QTRY_COMPARE(opacity(), opacityAtRest);
    }

private:
    /// Makes `control` alone in the window.
    QQuickItem *show(const QByteArray &control)
    {
        QQmlComponent component(m_engine.get());
        component.setData("import QtQuick\nimport orvalia.Shared\n" + control, QUrl(QStringLiteral("qrc:/test.qml")));
        m_item.reset(qobject_cast<QQuickItem *>(component.create()));
        if (!m_item)
            qFatal("%s", qPrintable(component.errorString()));
        m_item->setParentItem(content());
        return m_item.get();
    }

    /// Where the window puts its content, which keeps its focus while a popup has it.
    QQuickItem *content() const { return m_view->property("contentItem").value<QQuickItem *>(); }

    void type(const QByteArray &text)
    {
        for (const char letter : text)
            QTest::keyClick(m_view.get(), letter);
    }

    void press(std::initializer_list<Qt::Key> keys)
    {
        for (const Qt::Key key : keys)
            QTest::keyClick(m_view.get(), key);
    }

    void click(const QQuickItem *item) { QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, middleOf(item)); }

    static QPoint middleOf(const QQuickItem *item)
    {
        return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
    }

    static QString rows(const QSignalSpy &requested)
    {
        QStringList rows;
        for (const QList<QVariant> &arguments : requested)
            rows.append(arguments.first().toString());
        return rows.join(u' ');
    }

    std::unique_ptr<World> m_world;
    std::unique_ptr<PickerModel> m_choices;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_view;
    std::unique_ptr<QQuickItem> m_item;
};

QTEST_MAIN(ControlsTest)
#include "ControlsTest.moc"
