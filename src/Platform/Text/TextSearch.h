// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QByteArray>
#include <QString>

/// `text` as UTF-8 with case, accents and width differences folded away, the same in every locale: two texts that a
/// person would call alike fold to the same bytes. Folding takes about a microsecond, so keep the result.
QByteArray foldedForSearch(const QString &text);

/// Whether a folded text holds a folded needle. An empty needle is in every text.
inline bool foldedContains(const QByteArray &foldedText, const QByteArray &foldedNeedle)
{
    return foldedText.contains(foldedNeedle);
}

/// `text` without blanks and tabs at both ends; line ends stay.
QString trimmedOfBlanks(const QString &text);
