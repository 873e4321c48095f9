// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/ShownItems.h"
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

using namespace Qt::StringLiterals;

namespace {
/// A control alone in a window. What QML warns of fails the test.
struct Shown
{
    explicit Shown(const QByteArray &control)
    {
        engine.addImportPath(u"qrc:/qt/qml"_s);
        QObject::connect(&engine, &QQmlEngine::warnings, [](const QList<QQmlError> &warnings) {
            for (const QQmlError &warning : warnings)
                QTest::qFail(qPrintable(warning.toString()), __FILE__, __LINE__);
        });
        engine.rootContext()->setContextProperty(u"testChoices"_s, &choices);
        QQmlComponent component(&engine);
        component.setData("import QtQuick\nimport QtQuick.Controls.Basic as Basic\nimport orvalia.Gallery\n"
                          "import orvalia.Shared\n"
                          "Basic.ApplicationWindow { width: 600; height: 500; visible: true; "
                              + control + "}",
                          QUrl(u"qrc:/test.qml"_s));
        window.reset(qobject_cast<QQuickWindow *>(component.create()));
        if (!window || !QTest::qWaitForWindowActive(window.get()))
            qFatal("%s", qPrintable(component.errorString()));
        item = window->property("contentItem").value<QQuickItem *>()->childItems().constFirst();
    }

    QQuickItem *child(int index) const { return item->childItems().at(index); }
    /// What of the control is of this class of C++.
    QObject *part(const char *className) const
    {
        const QObjectList objects = item->findChildren<QObject *>();
        return *std::ranges::find_if(objects, [&](QObject *object) { return object->inherits(className); });
    }
    void press(std::initializer_list<Qt::Key> keys) const
    {
        for (const Qt::Key key : keys)
            QTest::keyClick(window.get(), key);
    }
    void click(const QQuickItem *at) const
    {
        QTest::mouseClick(window.get(), Qt::LeftButton, {}, ShownItems::middle(at));
    }

    World world;
    PickerModel choices{{{u"50 km"_s}, {u"100 km"_s}, {u"200 km"_s}}, nullptr};
    QQmlEngine engine;
    std::unique_ptr<QQuickWindow> window;
    QQuickItem *item = nullptr;
};
}

/// The shared controls in a window, driven as their user drives them.
class ControlsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Qt tells some roles and names otherwise while nobody listens.
    void initTestCase() { QAccessible::setActive(true); }

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
        Shown shown(control);
        QSignalSpy clicked(shown.item, SIGNAL(clicked()));
        shown.click(shown.item);
        QCOMPARE(clicked.count(), 1);
        shown.press({Qt::Key_Space});
        QCOMPARE(clicked.count(), 2);
        shown.press({Qt::Key_Return});
        QCOMPARE(clicked.count(), 3);
        QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(shown.item);
        QCOMPARE(reader->text(QAccessible::Name), u"A"_s);
        reader->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(clicked.count(), 4);
        shown.item->setEnabled(false);
        shown.click(shown.item);
        reader->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
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
        Shown shown(QTest::currentDataTag());
        const QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(shown.item);
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
        Shown shown("Row { BorderedButton { text: 'A' } BorderedButton { text: 'B' } }");
        QQuickWindow *window = shown.window.get();
        QQuickItem *button = shown.child(0);
        QSignalSpy clicked(button, SIGNAL(clicked()));
        const QPoint inside = ShownItems::middle(button);
        const QPoint outside = inside + QPoint(0, 100);
        const auto isPressed = [&] { return button->property("pressed").toBool(); };
        QTest::mousePress(window, Qt::LeftButton, {}, inside);
        QVERIFY(isPressed());
        QTest::mouseMove(window, outside);
        QVERIFY(!isPressed());
        QTest::mouseRelease(window, Qt::LeftButton, {}, outside);
        QTest::keyPress(window, Qt::Key_Space);
        QVERIFY(isPressed());
        shown.press({Qt::Key_Tab});
        QVERIFY(!isPressed());
        QTest::keyRelease(window, Qt::Key_Space);
        QTest::mousePress(window, Qt::LeftButton, {}, inside);
        button->setEnabled(false);
        QTest::mouseRelease(window, Qt::LeftButton, {}, inside);
        QCOMPARE(clicked.count(), 0);
        button->setEnabled(true);
        QTest::mouseDClick(window, Qt::LeftButton, {}, inside);
        QCOMPARE(clicked.count(), 2);
    }

    void onlyTheKeyboardShowsTheFocusRing()
    {
        Shown shown("Row { BorderedButton { text: 'A' } BorderedButton { text: 'B' } }");
        const auto hasRing = [&](int button) {
            return std::ranges::any_of(shown.child(button)->findChildren<QQuickItem *>(), [](QQuickItem *part) {
                return part->property("around").isValid() && part->property("shown").toBool();
            });
        };
        shown.click(shown.child(0));
        QVERIFY(shown.child(0)->hasActiveFocus());
        QVERIFY(!hasRing(0));
        shown.press({Qt::Key_Tab});
        QVERIFY(shown.child(1)->hasActiveFocus());
        QVERIFY(hasRing(1));
        QVERIFY(!hasRing(0));
    }

    void choicesAreAskedForAndNotMade()
    {
        Shown shown("Column { SegmentedControl { name: 'A'; choices: testChoices; current: 2 } "
                    "Picker { text: 'A'; choices: testChoices; current: 1 } }");
        const auto asked = [](const QSignalSpy &requests) {
            QStringList choices;
            for (const QList<QVariant> &arguments : requests)
                choices.append(arguments.first().toString());
            return choices.join(u' ');
        };
        QSignalSpy neighbours(shown.child(0), SIGNAL(requested(int)));
        shown.child(0)->forceActiveFocus(Qt::TabFocusReason);
        shown.press({Qt::Key_Right, Qt::Key_Left, Qt::Key_Left});
        QCOMPARE(asked(neighbours), u"1 1"_s);

        QQuickItem *picker = shown.child(1);
        QSignalSpy rows(picker, SIGNAL(requested(int)));
        picker->forceActiveFocus(Qt::TabFocusReason);
        shown.press({Qt::Key_Space, Qt::Key_Down, Qt::Key_Return});
        QTRY_VERIFY(picker->hasActiveFocus());
        shown.press({Qt::Key_Down, Qt::Key_Home, Qt::Key_Return});
        QTRY_VERIFY(picker->hasActiveFocus());
        QCOMPARE(asked(rows), u"2 0"_s);
        shown.choices.setChoices({{u"1 mi"_s}, {u"2 mi"_s}});
        QCOMPARE(picker->property("currentText").toString(), u"2 mi"_s);
    }

    void aMenuIsAsWideAsItsEntriesAndWorkedByKeys()
    {
        Shown shown("Item { ActionMenu { title: 'M'; ActionMenuItem { text: 'A' } ActionMenuDivider {} "
                    "ActionMenuItem { text: 'A long entry'; shortcutText: 'Ctrl+Shift+S' } } }");
        QObject *menu = shown.part("QQuickMenu");
        QMetaObject::invokeMethod(menu, "open");
        QTRY_VERIFY(menu->property("opened").toBool());
        const auto entries =
            ShownItems::all(*shown.window, [](QQuickItem *entry) { return entry->inherits("QQuickMenuItem"); });
        QVERIFY(entries.last()->width() >= entries.last()->implicitWidth());
        QSignalSpy triggered(entries.last(), SIGNAL(triggered()));
        shown.press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Return});
        QCOMPARE(triggered.count(), 1);
        QTRY_VERIFY(!menu->property("visible").toBool());
    }

    void aPressOutsideAPopoverOnlyClosesIt()
    {
        Shown shown("BorderedButton { text: 'A'; Popover { name: 'P'; contentItem: Item {} } }");
        QSignalSpy clicked(shown.item, SIGNAL(clicked()));
        QObject *popover = shown.part("QQuickPopup");
        QMetaObject::invokeMethod(popover, "open");
        QTRY_VERIFY(popover->property("opened").toBool());
        shown.click(shown.item);
        QTRY_VERIFY(!popover->property("visible").toBool());
        QCOMPARE(clicked.count(), 0);
    }

    void aSheetStaysUntilItsOwnerLetsItGo()
    {
        Shown shown("Item { Sheet { title: 'S'; visible: true } }");
        QObject *sheet = shown.part("QQuickPopup");
        QSignalSpy asked(sheet, SIGNAL(dismissRequested()));
        QTRY_VERIFY(sheet->property("opened").toBool());
        QTest::mouseClick(shown.window.get(), Qt::LeftButton, {}, QPoint(3, 3));
        QCOMPARE(asked.count(), 0);
        shown.press({Qt::Key_Escape});
        QCOMPARE(asked.count(), 1);
        QVERIFY(sheet->property("visible").toBool());
    }

    void typedDaysThatCannotBeChosenStayInTheField()
    {
        Shown shown("Row { DateField { text: 'A'; date: new Date(2021, 8, 19, 12) } BorderedButton { text: 'B' } }");
        QQuickItem *field = shown.child(0);
        QSignalSpy requested(field, SIGNAL(requested(QDateTime)));
        auto *entry = field->findChild<QQuickItem *>(u"typedDate"_s);
        const auto isRefused = [&] { return field->property("isRefused").toBool() && entry->isVisible(); };
        field->forceActiveFocus(Qt::TabFocusReason);
        ShownItems::type(*shown.window, u"2021-09-31"_s);
        QVERIFY(!isRefused());
        shown.press({Qt::Key_Tab});
        QVERIFY(isRefused());
        QCOMPARE(entry->property("text").toString(), u"2021-09-31"_s);
        QVERIFY(QAccessible::queryAccessibleInterface(entry)->text(QAccessible::Description).contains(u"9/19/2021"));
        entry->forceActiveFocus();
        shown.press({Qt::Key_Escape});
        QVERIFY(!isRefused());
        QVERIFY(field->hasActiveFocus());
        // Nothing at all is given up, not refused.
        shown.press({Qt::Key_2, Qt::Key_Backspace, Qt::Key_Return});
        QVERIFY(field->hasActiveFocus());
        QCOMPARE(requested.count(), 0);
        shown.press({Qt::Key_Down, Qt::Key_PageDown, Qt::Key_Left, Qt::Key_Return});
        QCOMPARE(requested.count(), 1);
        QCOMPARE(requested.at(0).at(0).toDateTime(), QDateTime(QDate(2021, 10, 18), QTime(12, 0)));
    }

    void coloursAndMotionFollowTheDesktopLive()
    {
        Shown shown("Rectangle { color: Theme.window; Spinner { name: 'A' } }");
        const auto color = [&] { return shown.item->property("color").value<QColor>(); };
        QCOMPARE(color(), QColor(0xFCFDFD));
        shown.world.appearance.setColorScheme(Appearance::ColorScheme::dark);
        QCOMPARE(color(), QColor(0x14181B));
        const auto isTurning = [&] { return shown.part("QQmlTimer")->property("running").toBool(); };
        QVERIFY(isTurning());
        shown.window->hide();
        QVERIFY2(!isTurning(), "it turns where nobody looks");
        shown.window->showNormal();
        QTRY_VERIFY(isTurning());
        shown.world.appearance.setReducedMotion(true);
        QVERIFY(!isTurning());
    }

    void anIconHasItsTipUntilItIsPressed()
    {
        Shown shown("IconButton { x: 300; text: 'A'; iconName: 'gear'; Component.onCompleted: TipTiming.noteShown() }");
        const QObject *tip = shown.part("QQuickToolTip");
        const QPoint middle = ShownItems::middle(shown.item);
        QVERIFY(!tip->property("visible").toBool());
        QTest::mouseMove(shown.window.get(), middle);
        QTRY_VERIFY(tip->property("opened").toBool());
        QTest::mousePress(shown.window.get(), Qt::LeftButton, {}, middle);
        QTRY_VERIFY(!tip->property("visible").toBool());
    }

    void everyControlIsPlainAndNamed()
    {
        Shown shown("Gallery {}");
        shown.item->findChild<QQuickItem *>(u"picker"_s)->forceActiveFocus();
        shown.press({Qt::Key_Down});
        QVERIFY(shown.item->findChildren<QQuickItem *>().size() > 300);
        QCOMPARE(faultsOfItems(*shown.window), QStringList());
        // The opened menu, which is as wide as its widest choice, cuts none off.
        const auto isCut = [](const QQuickItem *item) { return item->property("truncated").toBool(); };
        QVERIFY2(ShownItems::all(*shown.window, isCut).isEmpty(), "no text is cut off, in the opened menu neither");
    }

    void scrollBarFadesWhereTheUserScrollsByTouch()
    {
        using Type = QInputDevice::DeviceType;
        for (const auto &[device, opacityAtRest] :
             {std::pair(Type::Mouse, 1.0), {Type::TouchScreen, 0.0}, {Type::TouchPad, 0.0}}) {
            const std::unique_ptr<QPointingDevice> pointer(QTest::createTouchDevice(device));
            Shown shown("ScrollPage { name: 'A'; width: 200; height: 100; Item { width: 1; height: 900 } }");
            const auto *thumb = shown.part("QQuickScrollBar")->property("contentItem").value<QQuickItem *>();
            QTRY_COMPARE(thumb->opacity(), opacityAtRest);
            ShownItems::turnWheel(shown.item, -120);
            QTRY_COMPARE(thumb->opacity(), 1.0);
            QTRY_COMPARE(thumb->opacity(), opacityAtRest);
        }
    }
};

QTEST_MAIN(ControlsTest)
#include "ControlsTest.moc"
