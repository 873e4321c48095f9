// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/UserDefaults/SettingsUserDefaults.h"

#include "Platform/Text/NumberFormat.h"

#include <QDateTime>
#include <QFile>
#include <QStandardPaths>

#include <algorithm>

namespace {
constexpr QLatin1String boolTag("bool");
constexpr QLatin1String numberTag("number");
constexpr QLatin1String textTag("text");
constexpr QLatin1String dateTag("date");
constexpr QLatin1String trueText("true");
constexpr QLatin1String falseText("false");

QString tagged(QLatin1String tag, const QString &text)
{
    return tag + u':' + text;
}

/// QSettings by itself gives back a number or a boolean of an INI file as a text, and a date as binary data.
QString encoded(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return tagged(boolTag, value.toBool() ? trueText : falseText);
    case QMetaType::QString:
        return tagged(textTag, value.toString());
    case QMetaType::QDateTime:
        return tagged(dateTag, value.toDateTime().toUTC().toString(Qt::ISODateWithMs));
    default:
        Q_ASSERT(value.canConvert<double>());
        return tagged(numberTag, shortestText(value.toDouble()));
    }
}

QVariant decodedBool(const QString &text)
{
    if (text == trueText)
        return true;
    return text == falseText ? QVariant(false) : QVariant();
}

QVariant decodedNumber(const QString &text)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    return isNumber ? QVariant(number) : QVariant();
}

QVariant decodedDate(const QString &text)
{
    const QDateTime date = QDateTime::fromString(text, Qt::ISODateWithMs);
    return date.isValid() ? QVariant(date) : QVariant();
}

/// An invalid QVariant for anything that encoded() does not write.
QVariant decoded(const QVariant &saved)
{
    const QString whole = saved.toString();
    const qsizetype colon = whole.indexOf(u':');
    const QStringView tag = QStringView(whole).left(std::max(colon, qsizetype(0)));
    const QString text = whole.mid(colon + 1);
    if (tag == boolTag)
        return decodedBool(text);
    if (tag == numberTag)
        return decodedNumber(text);
    if (tag == dateTag)
        return decodedDate(text);
    return tag == textTag ? QVariant(text) : QVariant();
}
}

SettingsUserDefaults::SettingsUserDefaults(const QString &path)
    : m_settings(path, QSettings::IniFormat)
{
    m_settings.setFallbacksEnabled(false);
    // A line is only looked at when a key of its section is asked for.
    m_settings.allKeys();
    if (m_settings.status() == QSettings::FormatError)
        QFile::copy(path, path + QStringLiteral(".unreadable"));
}

QString SettingsUserDefaults::standardPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + QStringLiteral("/settings.ini");
}

QVariant SettingsUserDefaults::object(const QString &key) const
{
    return decoded(m_settings.value(key));
}

void SettingsUserDefaults::setObject(const QString &key, const QVariant &value)
{
    m_settings.setValue(key, encoded(value));
    m_settings.sync();
}

void SettingsUserDefaults::removeObject(const QString &key)
{
    m_settings.remove(key);
    m_settings.sync();
}
