// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Ajustes
import orvalia.Shared

/// Puts the program's questions for a permission to the user, in the window that it stands in.
QuestionDialog {
    id: root

    /// Whether this window is the one to ask.
    property bool isHost: true

    visible: isHost && questions.isOpen
    iconName: questions.iconName
    question: questions.question
    explanation: questions.explanation
    agreeText: Texts.localized("permission.agree", "Permitir")
    refuseText: Texts.localized("permission.refuse", "No permitir")
    onAgreed: questions.answer(true)
    onRefused: questions.answer(false)

    property PermissionQuestions questions: PermissionQuestions {}
}
