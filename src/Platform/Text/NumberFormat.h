// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QString>

/// `value` with exactly `decimals` digits behind a decimal point, whatever the locale: halves of the exact binary
/// value go to the even digit (2.25 with one decimal is "2.2"), and a negative zero keeps its sign ("-0.0").
QString fixedText(double value, int decimals);

/// A length in whole kilometres, rounded alike: "12 km".
QString kilometersText(double kilometers);

/// The shortest decimal text that reads back as the same value, always with a fractional digit: "28.0", "-16.5".
QString shortestText(double value);
