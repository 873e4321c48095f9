// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import orvalia.Ajustes
import orvalia.Historico
import orvalia.Mapa
import orvalia.Shared
import orvalia.Stats
import orvalia.Tabs
import orvalia.Ultimos

/// The phone-sized root: three screens, and the tabs that choose among them. It has no menu.
T.ApplicationWindow {
    id: root

    required property ModelContainer container
    property int currentTab: 0

    /// A screen is made anew each time its tab is chosen.
    component Tab: Loader {
        required property int index

        anchors.fill: parent
        active: root.currentTab === index
    }
    component Choice: TabBarItem {
        required property int index

        Layout.fillWidth: true
        Layout.preferredWidth: 1
        isSelected: root.currentTab === index
        onClicked: root.currentTab = index
    }

    width: 360
    height: 640
    minimumWidth: 320
    minimumHeight: 480
    visible: true
    title: Texts.localized("Terremotos", "Terremotos")
    color: Theme.window
    font.family: Theme.fontFamily

    MainTabScreen {
        id: screen

        container: root.container
    }
    PermissionQuestion {}

    // What the screens show of one another.
    Component {
        id: historicoPage

        HistoricoPage { container: root.container }
    }
    Component {
        id: settingsForm

        SettingsView {}
    }
    Item {
        width: root.width
        height: root.height - bar.height

        // qmllint disable unqualified
        Tab {
            index: 0
            sourceComponent: EarthquakeListView {
                container: root.container
                repository: screen.repository
                historico: historicoPage
                settings: settingsForm
            }
        }
        Tab {
            index: 1
            sourceComponent: MapView {
                container: root.container
                repository: screen.repository
                settings: settingsForm
            }
        }
        Tab {
            index: 2
            sourceComponent: StatsView {
                container: root.container
                settings: settingsForm
            }
        }
        // qmllint enable unqualified
    }
    Rectangle {
        id: bar

        y: root.height - height
        width: root.width
        height: Theme.toolbarHeight
        color: Theme.sidebar
        Accessible.role: Accessible.PageTabList
        Accessible.name: root.title

        RowLayout {
            anchors.fill: parent
            spacing: 0

            Choice {
                index: 0
                text: Texts.localized("tab.sismos", "Sismos")
                iconName: "list.bullet.rectangle"
            }
            Choice {
                index: 1
                text: Texts.localized("tab.mapa", "Mapa")
                iconName: "map"
            }
            Choice {
                index: 2
                text: Texts.localized("tab.estadisticas", "Estadísticas")
                iconName: "chart.bar.xaxis"
            }
        }
        Divider { width: bar.width }
    }
}
