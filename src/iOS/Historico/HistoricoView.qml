// SPDX-License-Identifier: GPL-3.0-or-later
import orvalia.Historico
import orvalia.Shared

/// The whole store, newest first, a page at a time.
NavigationStack {
    id: root

    required property ModelContainer container

    initialItem: HistoricoPage {
        container: root.container
    }
}
