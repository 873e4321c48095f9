// SPDX-License-Identifier: GPL-3.0-or-later
import QtQml

/// The search of a page: what its field shows, and what the user asks of it.
QtObject {
    required property string prompt
    required property string text
    /// The search is in use.
    required property bool isPresented

    signal textEdited(text: string)
    signal presentationRequested(isPresented: bool)
    /// From the field on to what was found.
    signal resultsRequested
}
