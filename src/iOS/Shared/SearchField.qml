// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import orvalia.Shared

/// A field to search in. Escape empties it; in an empty field Escape asks to leave it.
T.TextField {
    id: root

    /// The user wants out: by Escape in the empty field.
    signal leaveRequested

    function clearText(): void {
        root.clear()
        root.textEdited()
    }

    implicitWidth: 220
    implicitHeight: Theme.buttonHeight
    leftPadding: Theme.s + Theme.iconField + 6
    rightPadding: clearButton.visible ? Theme.hitSizeSmall : Theme.s
    verticalAlignment: TextInput.AlignVCenter
    font.family: Theme.fontFamily
    font.pixelSize: Theme.callout.size
    color: Theme.primary
    selectionColor: Theme.accent
    selectedTextColor: Theme.textOnAccent
    selectByMouse: true
    maximumLength: 200
    Accessible.role: Accessible.EditableText
    Accessible.name: placeholderText
    Accessible.searchEdit: true
    Keys.onEscapePressed: root.text.length > 0 ? root.clearText() : root.leaveRequested()

    cursorDelegate: Rectangle {
        id: caret

        width: 1.5
        color: Theme.accent
        visible: root.cursorVisible
    }
    background: Rectangle {
        radius: Theme.radiusControl
        color: root.activeFocus ? Theme.control : Theme.systemFill

        FocusRing {
            shown: root.activeFocus
            inside: true
        }
    }

    Icon {
        x: Theme.s
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.iconField
        height: Theme.iconField
        name: "magnifyingglass"
        color: Theme.secondary
    }
    PlainText {
        x: root.leftPadding
        width: root.width - x - Theme.s
        anchors.verticalCenter: parent.verticalCenter
        text: root.placeholderText
        textStyle: Theme.callout
        color: Theme.secondary
        visible: root.length === 0 && root.preeditText.length === 0
        Accessible.ignored: true
    }
    IconButton {
        id: clearButton

        anchors.right: parent.right
        anchors.rightMargin: Theme.xxs
        anchors.verticalCenter: parent.verticalCenter
        size: Theme.hitSizeSmall
        iconSize: Theme.iconField
        iconName: "xmark.circle.fill"
        text: Texts.localized("search.clear", "Borrar búsqueda")
        visible: root.length > 0
        focusPolicy: Qt.NoFocus
        onClicked: root.clearText()
    }
}
