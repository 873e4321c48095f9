// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QString>

#include <vector>

class QFontMetricsF;

/// A digit, or the text between two digits, and where it is drawn.
struct DigitCell
{
    QString text;
    qreal x;
    qreal width;
};

/// Digits centred in cells of equal width, what lies between them as runs in the font's own spacing: so that numbers
/// neither jump as they change nor lose their columns under one another. Inter's own digits differ in width, and Qt
/// cannot ask the font for its tabular ones.
std::vector<DigitCell> digitCells(const QString &text, const QFontMetricsF &metrics);
