// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Text/OneLine.h"

namespace {
bool isBlankOrControl(QChar c)
{
    return c.isSpace() || c.category() == QChar::Other_Control;
}

/// Embeddings, overrides, isolates and marks of the bidirectional algorithm, and the byte order mark.
bool isInvisibleMark(QChar c)
{
    const char16_t code = c.unicode();
    return code == 0x061C || code == 0x200E || code == 0x200F || (code >= 0x202A && code <= 0x202E)
        || (code >= 0x2066 && code <= 0x2069) || code == 0xFEFF;
}
}

QString oneLine(const QString &text)
{
    QString line;
    line.reserve(text.size());
    bool isBlankDue = false;
    for (const QChar c : text) {
        if (isInvisibleMark(c))
            continue;
        if (isBlankOrControl(c)) {
            isBlankDue = true;
            continue;
        }
        if (isBlankDue && !line.isEmpty())
            line += u' ';
        isBlankDue = false;
        line += c;
    }
    return line;
}
