// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QString>

#include <unicode/unistr.h>

/// `text` as ICU holds it; a copy, so that it may outlive `text`.
inline icu::UnicodeString toIcu(const QString &text)
{
    return icu::UnicodeString(reinterpret_cast<const char16_t *>(text.utf16()), int32_t(text.size()));
}

inline QString fromIcu(const icu::UnicodeString &text)
{
    return QString::fromUtf16(text.getBuffer(), text.length());
}
