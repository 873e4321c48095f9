// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Text/TextSearch.h"

#include "Platform/Text/IcuText.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <string>

namespace {
constexpr UChar32 dotlessI = 0x131;

/// Folds case, ligatures, widths and superscripts, and takes every accent apart from its letter.
icu::UnicodeString decomposed(const QString &text)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2 *folding = icu::Normalizer2::getNFKCCasefoldInstance(status);
    const icu::Normalizer2 *decomposing = icu::Normalizer2::getNFDInstance(status);
    if (U_FAILURE(status))
        qFatal("the Unicode tables cannot be read: %s", u_errorName(status));
    return decomposing->normalize(folding->normalize(toIcu(text), status), status);
}

bool isBlank(QChar character)
{
    return character == u'\t' || character.category() == QChar::Separator_Space;
}
}

// A plain fold and not a collation: a collator follows the language, and in Spanish it calls n and ñ two letters, so
// that "penon" would not find PEÑÓN.
QByteArray foldedForSearch(const QString &text)
{
    icu::UnicodeString letters;
    const icu::UnicodeString source = decomposed(text);
    for (int32_t i = 0; i < source.length(); i = source.moveIndex32(i, 1)) {
        const UChar32 character = source.char32At(i);
        if (u_charType(character) != U_NON_SPACING_MARK)
            letters.append(character == dotlessI ? UChar32('i') : character);
    }
    std::string utf8;
    letters.toUTF8String(utf8);
    return QByteArray::fromStdString(utf8);
}

QString trimmedOfBlanks(const QString &text)
{
    const auto first = std::find_if_not(text.begin(), text.end(), isBlank);
    const auto last = std::find_if_not(text.rbegin(), std::make_reverse_iterator(first), isBlank).base();
    return QString(first, last - first);
}
