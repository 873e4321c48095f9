// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import orvalia.Ajustes
import orvalia.Shared

/// The answers about notifications and position, to be changed. Opening it again brings it to the front.
T.ApplicationWindow {
    id: root

    function open(): void {
        root.show()
        root.raise()
        root.requestActivate()
    }

    width: 520
    height: 300
    minimumWidth: 420
    minimumHeight: 260
    transientParent: null
    title: Texts.localized("permissions.title", "Permisos")
    color: Theme.surface
    font.family: Theme.fontFamily

    Shortcut {
        sequences: [StandardKey.Close, StandardKey.Cancel]
        onActivated: root.close()
    }
    FormColumn {
        id: form

        width: root.width
        topPadding: Theme.xs

        FormSection {
            header: Texts.localized("permissions.title", "Permisos")
            footer: Texts.localized("permissions.footer", "orvalia pregunta una sola vez por cada permiso y recuerda la respuesta.")

            PermissionRow {
                iconName: "bell.fill"
                title: Texts.localized("permissions.notifications", "Notificaciones")
                purpose: Texts.localized("permissions.notifications.purpose", "Avisos de sismos en el escritorio")
                permission: PermissionChoice { subject: PermissionChoice.Notifications }
            }
            PermissionRow {
                iconName: "location.fill"
                title: Texts.localized("permissions.location", "Ubicación")
                purpose: Texts.localized("permissions.location.purpose", "Para los avisos por proximidad")
                permission: PermissionChoice { subject: PermissionChoice.Location }
            }
        }
    }
    BorderedButton {
        x: root.width - width - Theme.xl
        y: form.height + Theme.l
        text: Texts.localized("permissions.desktop", "Ajustes de notificaciones del escritorio")
        visible: DesktopSettings.exist
        onClicked: DesktopSettings.open()
    }
}
