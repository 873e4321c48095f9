// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared
import orvalia.Stats

/// What the stored events come to, on five cards.
NavigationStack {
    id: root

    required property ModelContainer container
    /// The form of the settings, for a sheet.
    required property Component settings

    StatsScreen {
        id: screen

        container: root.container
    }
    SettingsSheet {
        settings: root.settings
        visible: screen.showSettings
        onDismissRequested: screen.showSettings = false
    }

    initialItem: NavigationPage {
        id: page

        title: Texts.localized("tab.estadisticas", "Estadísticas")
        onAppeared: screen.appear()

        EmptyState {
            anchors.fill: parent
            visible: screen.isEmpty
            iconName: "chart.bar.xaxis"
            title: Texts.localized("stats.empty.title", "Sin datos")
            description: Texts.localized("stats.empty.description",
                                         "Las estadísticas aparecerán cuando haya terremotos registrados.")
        }
        ScrollPage {
            anchors.fill: parent
            visible: !screen.isEmpty
            focus: true
            name: page.title

            Column {
                x: Theme.l
                width: parent.width - 2 * Theme.l
                topPadding: Theme.l
                bottomPadding: Theme.l
                spacing: Theme.xl

                StatsSectionContainer {
                    width: parent.width
                    title: Texts.localized("stats.section.actividad", "Actividad Reciente")

                    Grid {
                        id: counts

                        readonly property real cardWidth: (width - spacing) / 2

                        width: parent.width
                        columns: 2
                        spacing: 10

                        ActivityCountCard {
                            width: counts.cardWidth
                            count: screen.countLastHour
                            label: Texts.localized("stats.period.lastHour", "Última hora")
                        }
                        ActivityCountCard {
                            width: counts.cardWidth
                            count: screen.countLast24h
                            label: Texts.localized("stats.period.last24h", "Últimas 24h")
                        }
                        ActivityCountCard {
                            width: counts.cardWidth
                            count: screen.countLast7d
                            label: Texts.localized("stats.period.last7d", "Últimos 7 días")
                        }
                        ActivityCountCard {
                            width: counts.cardWidth
                            count: screen.countLast30d
                            label: Texts.localized("stats.period.last30d", "Últimos 30 días")
                        }
                    }
                }
                StatsSectionContainer {
                    width: parent.width
                    title: Texts.localized("stats.section.destacados", "Eventos Destacados")

                    Column {
                        width: parent.width
                        spacing: 6

                        PeakEventRow {
                            width: parent.width
                            periodLabel: Texts.localized("stats.destacados.24h", "Mayor en 24h")
                            event: screen.peakLast24h
                        }
                        Divider {
                            width: parent.width
                        }
                        PeakEventRow {
                            width: parent.width
                            periodLabel: Texts.localized("stats.destacados.7d", "Mayor en 7 días")
                            event: screen.peakLast7d
                        }
                    }
                }
                StatsSectionContainer {
                    width: parent.width
                    title: Texts.localized("stats.section.distribucion", "Distribución por Magnitud")

                    Column {
                        width: parent.width
                        spacing: Theme.m

                        Repeater {
                            model: screen.magnitudes

                            MagnitudeBarRow {
                                width: parent.width
                            }
                        }
                    }
                }
                StatsSectionContainer {
                    width: parent.width
                    title: Texts.localized("stats.section.zonas", "Zonas Más Activas")

                    Column {
                        width: parent.width

                        PlainText {
                            textStyle: Theme.subheadline
                            color: Theme.tertiary
                            text: Texts.localized("stats.zonas.none", "Sin datos suficientes")
                            visible: !screen.hasClusters
                        }
                        Repeater {
                            id: zones

                            model: screen.clusters

                            ClusterRow {
                                required property int index

                                width: parent.width
                                isLast: index === zones.count - 1
                            }
                        }
                    }
                }
                StatsSectionContainer {
                    width: parent.width
                    title: Texts.localized("stats.section.profundidad", "Análisis de Profundidad")

                    Column {
                        width: parent.width

                        PlainText {
                            textStyle: Theme.subheadline
                            color: Theme.tertiary
                            text: Texts.localized("stats.depth.none", "Sin datos")
                            visible: !screen.hasDepth
                        }
                        // Made once there is something to show, so that its bars stand at their shares at once.
                        Loader {
                            width: parent.width
                            active: screen.hasDepth
                            sourceComponent: DepthAnalysis {
                                averageDepth: screen.averageDepth
                                shallow: screen.shallow
                                intermediate: screen.intermediate
                                deep: screen.deep
                            }
                        }
                    }
                }
            }
        }
    }
}
