// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Text/NumberFormat.h"

#include <array>
#include <charconv>
#include <cmath>

namespace {
/// The greatest double has 309 digits before its point, the smallest at most 326 characters in its shortest form.
using Buffer = std::array<char, 400>;

template<class... Format>
QString text(double value, Format... format)
{
    Buffer buffer;
    const auto result = std::to_chars(buffer.begin(), buffer.end(), value, std::chars_format::fixed, format...);
    Q_ASSERT(result.ec == std::errc());
    return QString::fromLatin1(buffer.data(), result.ptr - buffer.data());
}
}

// std::to_chars because QString::number rounds 2.25 to 2.3, and snprintf writes the decimal comma of the desktop.

QString fixedText(double value, int decimals)
{
    return text(value, decimals);
}

QString kilometersText(double kilometers)
{
    return fixedText(kilometers, 0) + QStringLiteral(" km");
}

QString shortestText(double value)
{
    const QString digits = text(value);
    const bool isWhole = std::isfinite(value) && !digits.contains(u'.');
    return isWhole ? digits + QStringLiteral(".0") : digits;
}
