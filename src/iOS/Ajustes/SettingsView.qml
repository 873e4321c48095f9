// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import orvalia.Ajustes
import orvalia.Shared

/// Alerts and automatic refresh. Every change takes effect at once; whoever shows this gives it a title.
Flickable {
    id: root

    /// Scrolls as little as shows the whole item, with some air.
    function reveal(item: Item): void {
        const top = item.mapToItem(form, 0, 0).y - Theme.l
        const bottom = top + item.height + 2 * Theme.l
        root.contentY = Math.max(0, Math.min(root.contentHeight - root.height,
                                             Math.min(top, Math.max(root.contentY, bottom - root.height))))
    }

    function holds(item: Item): bool {
        for (let above = item; above !== null; above = above.parent) {
            if (above === root)
                return true
        }
        return false
    }

    implicitWidth: 520
    implicitHeight: form.implicitHeight
    contentWidth: width
    contentHeight: form.implicitHeight
    boundsBehavior: Flickable.StopAtBounds
    T.ScrollBar.vertical: OverlayScrollBar {}

    SettingsScreen {
        id: screen
    }
    Connections {
        target: root.Window.window

        function onActiveFocusItemChanged(): void {
            const item = root.Window.activeFocusItem
            if (item !== null && root.holds(item))
                root.reveal(item)
        }
    }

    FormColumn {
        id: form

        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(600, root.width)
        topPadding: Theme.xs
        bottomPadding: Theme.xl

        FormSection {
            header: Texts.localized("settings.alerts.header", "Alerts")
            footer: Texts.localized("settings.alerts.footer", "Receive alerts when earthquakes are detected in the Canary Islands.")

            SwitchRow {
                iconName: "bell.fill"
                label: Texts.localized("settings.notifications", "Notifications")
                on: screen.isEnabled
                onRequested: (on) => screen.isEnabled = on
            }
            WarningRow {
                iconName: "exclamationmark.triangle.fill"
                iconColor: Theme.warningIcon
                tint: Theme.warning
                title: Texts.localized("settings.notifications.disabled.title", "Notifications disabled in iOS")
                detail: Texts.localized("settings.notifications.disabled.detail", "To receive them, enable them in System Settings.")
                visible: screen.showsNotificationWarning
                onSettingsRequested: screen.openSystemSettings()
            }
        }
        FormSection {
            header: Texts.localized("settings.alertType.header", "Alert type")
            footer: screen.magnitudeFooter
            visible: screen.isEnabled

            SwitchRow {
                iconName: "waveform.path.ecg"
                label: Texts.localized("settings.byMagnitude", "By magnitude")
                on: screen.byMagnitude
                onRequested: (on) => screen.byMagnitude = on
            }
            FormRow {
                label: Texts.localized("settings.magnitudeThreshold", "Minimum threshold")
                visible: screen.byMagnitude

                Picker {
                    text: Texts.localized("settings.magnitudeThreshold", "Minimum threshold")
                    choices: screen.categories
                    current: screen.categoryRow
                    onRequested: (row) => screen.categoryRow = row
                }
            }
        }
        FormSection {
            header: Texts.localized("settings.location.header", "Location")
            footer: Texts.localized("settings.location.footer", "Notifies when an earthquake occurs within the selected radius from your current location.")
            visible: screen.isEnabled

            SwitchRow {
                iconName: "location.fill"
                label: Texts.localized("settings.byProximity", "By proximity")
                on: screen.byProximity
                onRequested: (on) => screen.byProximity = on
            }
            WarningRow {
                iconName: "location.slash.fill"
                iconColor: Theme.destructive
                tint: Theme.destructive
                title: Texts.localized("settings.location.denied.title", "Location permission denied")
                detail: Texts.localized("settings.location.denied.detail", "Enable it in System Settings.")
                visible: screen.showsLocationWarning
                onSettingsRequested: screen.openSystemSettings()
            }
            FormCell {
                visible: screen.byProximity && !screen.showsLocationWarning

                Column {
                    width: parent.width
                    spacing: Theme.s

                    PlainText {
                        text: Texts.localized("settings.alertRadius", "Alert radius")
                        textStyle: Theme.subheadline
                    }
                    SegmentedControl {
                        width: parent.width
                        name: Texts.localized("settings.radius", "Radius")
                        equalWidths: true
                        choices: screen.radii
                        current: screen.radiusRow
                        onRequested: (row) => screen.radiusRow = row
                    }
                }
            }
        }
        FormSection {
            header: Texts.localized("settings.swarm.header", "Seismic swarms")
            footer: Texts.localized("settings.swarm.footer", "A swarm is a series of earthquakes in an area over a short period. Notified at most once every 30 minutes per rule.")
            visible: screen.isEnabled

            SwitchRow {
                iconName: "waveform.badge.exclamationmark"
                label: Texts.localized("settings.swarm", "Swarm detection")
                on: screen.swarmDetection
                onRequested: (on) => screen.swarmDetection = on
            }
            FormCell {
                visible: screen.swarmDetection

                Column {
                    width: parent.width
                    spacing: 6

                    PlainText {
                        text: Texts.localized("settings.swarm.trigger", "Activates if detected:")
                        textStyle: Theme.subheadline
                        color: Theme.secondary
                    }
                    Repeater {
                        model: screen.swarmRuleDescriptions

                        SwarmRuleLabel {
                            required property string modelData

                            width: parent ? parent.width : 0
                            text: modelData
                        }
                    }
                }
            }
        }
        FormSection {
            header: Texts.localized("Actualización automática", "Actualización automática")
            footer: screen.intervalFooter

            FormRow {
                label: Texts.localized("Frecuencia", "Frecuencia")

                Picker {
                    text: Texts.localized("Frecuencia", "Frecuencia")
                    choices: screen.intervals
                    current: screen.intervalRow
                    onRequested: (row) => screen.intervalRow = row
                }
            }
        }
    }
}
