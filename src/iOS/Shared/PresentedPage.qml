// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T

/// Keeps a page on a stack for as long as a state says so. When the user goes back from the page it asks for the end
/// of that state.
QtObject {
    id: root

    required property T.StackView stack
    required property Component page
    /// Bind it to the state.
    required property bool isPresented

    signal dismissed

    function follow(): void {
        if (root.isPresented && root.pushed === null) {
            root.below = root.stack.currentItem
            root.pushed = root.stack.push(root.page)
        } else if (!root.isPresented && root.pushed !== null) {
            root.stack.pop(root.below)
        }
    }

    function noticeGoing(): void {
        if (root.pushed !== null && root.stack.find(item => item === root.pushed) === null) {
            root.pushed = null
            root.dismissed()
        }
    }

    property Item pushed: null
    property Item below: null
    readonly property Connections watch: Connections {
        target: root.stack

        function onDepthChanged(): void {
            root.noticeGoing()
        }
    }

    onIsPresentedChanged: follow()
}
