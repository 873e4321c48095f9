// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QString>

#include <initializer_list>
#include <variant>

/// The text of `key` in the installed translation table, or `defaultText` where no table holds it.
QString localized(const char *key, const QString &defaultText);

/// One argument of a format text: fills the next %@ (text) or %lld (whole number).
using FormatArgument = std::variant<QString, qint64>;

/// `format` with its placeholders %@, %lld and %% replaced, in order. A placeholder without an argument of its kind
/// stays as it stands; an argument that itself holds a placeholder is not expanded again.
QString formatted(const QString &format, std::initializer_list<FormatArgument> arguments);

/// Takes over a translation table: a UTF-8 JSON object from key to text. Keys that it lacks keep their defaults.
/// An empty or unreadable table removes the one in force.
void setTranslationTable(const QByteArray &json);
