// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/DigitCells.h"

#include <QFontMetricsF>

#include <algorithm>

namespace {
qreal widestDigit(const QFontMetricsF &metrics)
{
    qreal widest = 0;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        widest = std::max(widest, metrics.horizontalAdvance(QChar(digit)));
    return widest;
}
}

std::vector<DigitCell> digitCells(const QString &text, const QFontMetricsF &metrics)
{
    const qreal digitWidth = widestDigit(metrics);
    std::vector<DigitCell> cells;
    qreal x = 0;
    for (qsizetype begin = 0; begin < text.size();) {
        qsizetype end = begin + 1;
        const bool isDigit = text.at(begin).isDigit();
        while (!isDigit && end < text.size() && !text.at(end).isDigit())
            ++end;
        const QString run = text.mid(begin, end - begin);
        const qreal advance = metrics.horizontalAdvance(run);
        const qreal width = isDigit ? std::max(digitWidth, advance) : advance;
        cells.push_back({run, x + (width - advance) / 2, width});
        x += width;
        begin = end;
    }
    return cells;
}
