// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QString>

/// `text` fit to be shown on one line beside other texts: line ends, tabs and control characters become one blank, at
/// the ends nothing; marks that turn the reading direction about are left out. A run of blanks becomes one.
QString oneLine(const QString &text);
