// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import orvalia.Shared

/// A panel over the map with the main figures of one event.
Item {
    id: root

    required property double magnitude
    required property string location
    required property string dateText
    required property string depthText
    required property string magnitudeType

    signal viewDetail
    signal dismissed

    implicitHeight: column.implicitHeight + 2 * Theme.l
    Accessible.role: Accessible.Pane
    Accessible.name: DisplayText.oneLine(root.location)

    FloatingGround {
        anchors.fill: parent
        radius: Theme.radiusCard
        color: Theme.material
        shadowStyle: Theme.shadowCallout
    }
    // What the panel covers is not to be tapped or zoomed through it.
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onWheel: wheel => wheel.accepted = true
    }
    ColumnLayout {
        id: column

        anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.l }
        spacing: Theme.m

        RowLayout {
            spacing: Theme.m

            MagnitudeBadge {
                magnitude: root.magnitude
            }
            ColumnLayout {
                Layout.fillWidth: true
                spacing: Theme.xxs

                OutsideText {
                    Layout.fillWidth: true
                    content: root.location
                    textStyle: Theme.headline
                    wrapMode: Text.Wrap
                    maximumLineCount: 2
                    elide: Text.ElideRight
                }
                PlainText {
                    Layout.fillWidth: true
                    text: root.dateText
                    textStyle: Theme.caption
                    color: Theme.secondary
                }
            }
            IconButton {
                text: Texts.localized("callout.close", "Cerrar")
                iconName: "xmark.circle.fill"
                onClicked: root.dismissed()
            }
        }
        Divider {
            Layout.fillWidth: true
        }
        RowLayout {
            spacing: Theme.xl

            StatItem {
                icon: "arrow.down.circle"
                value: root.depthText
                label: Texts.localized("callout.depth", "Depth")
            }
            StatItem {
                icon: "plusminus"
                value: MagnitudeScale.text(root.magnitude)
                label: Texts.localized("callout.magnitude", "Magnitude")
            }
            StatItem {
                icon: "waveform"
                value: root.magnitudeType
                label: Texts.localized("callout.type", "Type")
            }
        }
        ProminentButton {
            Layout.fillWidth: true
            implicitHeight: Theme.calloutButtonHeight
            text: Texts.localized("callout.viewDetail", "Ver detalle")
            textStyle: Theme.subheadline
            iconName: "arrow.right.circle.fill"
            categoryColor: MagnitudeScale.category(root.magnitude).color
            onClicked: root.viewDetail()
        }
    }
}
