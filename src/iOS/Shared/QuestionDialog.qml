// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import orvalia.Shared

/// A question that wants a yes or a no before anything else: the program's icon with the subject's on it, the question,
/// why it is asked, and two buttons. Bind `visible` to the state that opens it. Escape leaves it open: it is no answer.
T.Popup {
    id: root

    required property string iconName
    required property string question
    required property string explanation
    required property string agreeText
    required property string refuseText

    signal agreed
    signal refused

    parent: T.Overlay.overlay
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? Math.round((parent.height - height) / 2) : 0
    width: 340
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: Theme.xl
    topPadding: 26
    modal: true
    focus: true
    closePolicy: T.Popup.NoAutoClose
    onOpened: agree.forceActiveFocus(Qt.TabFocusReason)
    enter: PopIn {}
    exit: PopOut {}
    background: FloatingGround {
        radius: Theme.radiusSheet
        shadowStyle: Theme.shadowSheet
        Accessible.role: Accessible.AlertMessage
        Accessible.name: root.question
        Accessible.description: root.explanation
    }
    T.Overlay.modal: Scrim {}
    contentItem: Column {
        Icon {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 64
            height: 64
            name: "orvalia"

            Rectangle {
                x: 38
                y: 38
                width: 34
                height: 34
                radius: 17
                color: Theme.accent
                border.width: 3
                border.color: Theme.popover

                Icon {
                    anchors.centerIn: parent
                    width: Theme.iconField
                    height: Theme.iconField
                    name: root.iconName
                    color: Theme.textOnAccent
                }
            }
        }
        Item { width: 1; height: 14 }
        PlainText {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: root.question
            textStyle: Theme.headline
        }
        Item { width: 1; height: 6 }
        PlainText {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: root.explanation
            textStyle: Theme.callout
            color: Theme.secondary
        }
        Item { width: 1; height: Theme.xl }
        Row {
            id: row

            readonly property real share: (width - spacing) / 2

            width: parent.width
            spacing: Theme.s

            BorderedButton { width: row.share; text: root.refuseText; onClicked: root.refused() }
            ProminentButton { id: agree; width: row.share; text: root.agreeText; onClicked: root.agreed() }
        }
    }
}
