// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/UserDefaults/SettingsUserDefaults.h"

#include "Platform/Text/NumberFormat.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>
#include <optional>

#ifdef Q_OS_UNIX
#include <sys/file.h>
#endif

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
QVariant decoded(const QString &whole)
{
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

const QByteArray section = "[General]";

/// What the lines of a file say.
struct Parsed
{
    QMap<QString, QString> texts;
    /// Whether some are neither settings, nor blank, nor the section's.
    bool hasOthers = false;
};

/// Everything but the printable characters of ASCII, and the percent sign, as "%0A".
QByteArray escaped(const QString &text, const QByteArray &alsoEscaped)
{
    return text.toUtf8().toPercentEncoding(" !\"#$&'()*+,/:;<=>?@[\\]^`{|}", "%" + alsoEscaped);
}

QString unescaped(const QByteArray &bytes)
{
    return QString::fromUtf8(QByteArray::fromPercentEncoding(bytes));
}

Parsed parsed(const QByteArray &file)
{
    Parsed result;
    for (const QByteArray &whole : file.split('\n')) {
        const QByteArray line = whole.endsWith('\r') ? whole.chopped(1) : whole;
        const qsizetype sign = line.indexOf('=');
        if (sign > 0)
            result.texts.insert(unescaped(line.left(sign)), unescaped(line.mid(sign + 1)));
        else if (!line.isEmpty() && line != section)
            result.hasOthers = true;
    }
    return result;
}

/// Absent when there is a file that cannot be read: writing it anew would lose what it holds.
std::optional<QByteArray> contents(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return file.exists() ? std::nullopt : std::optional(QByteArray());
    const QByteArray bytes = file.readAll();
    return file.error() == QFileDevice::NoError ? std::optional(bytes) : std::nullopt;
}

/// Keeps other processes of this program from writing while it lives. The system ends the lock of a process that is
/// killed. Where there is no lock to be had the write goes on without.
class WriteLock
{
public:
    explicit WriteLock(const QString &path)
        : m_file(path + QStringLiteral(".lock"))
    {
#ifdef Q_OS_UNIX
        if (m_file.open(QIODevice::WriteOnly))
            ::flock(m_file.handle(), LOCK_EX);
#endif
    }

private:
    QFile m_file;
};

/// Adds a file that is about to be replaced to those kept, unless it is the last of them: a write may fail and be tried
/// again.
void keep(const QByteArray &file, const QString &path)
{
    QFile kept(path);
    if (kept.open(QIODevice::ReadWrite) && !kept.readAll().endsWith(file))
        kept.write(file);
}

/// False, and the file as it was, when it could not be written.
bool replaceFile(const QString &path, const QMap<QString, QString> &texts)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(section + '\n');
    for (auto text = texts.begin(); text != texts.end(); ++text)
        file.write(escaped(text.key(), "=[;#") + '=' + escaped(text.value(), {}) + '\n');
    // commit() goes on after a failure of the last write, and puts a file that is cut short in the place of the old.
    return file.flush() && file.commit();
}
}

SettingsUserDefaults::SettingsUserDefaults(const QString &path)
    : m_path(path)
    , m_saved(parsed(contents(path).value_or(QByteArray())).texts)
{
}

QString SettingsUserDefaults::standardPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + QStringLiteral("/settings.ini");
}

QVariant SettingsUserDefaults::object(const QString &key) const
{
    return decoded(m_changes.contains(key) ? m_changes.value(key) : m_saved.value(key));
}

void SettingsUserDefaults::setObject(const QString &key, const QVariant &value)
{
    change(key, encoded(value));
}

void SettingsUserDefaults::removeObject(const QString &key)
{
    change(key, QString());
}

void SettingsUserDefaults::change(const QString &key, const QString &text)
{
    m_changes.insert(key, text);
    QDir().mkpath(QFileInfo(m_path).path());
    const WriteLock lock(m_path);
    const std::optional<QByteArray> file = contents(m_path);
    if (!file)
        return;
    const Parsed present = parsed(*file);
    if (present.hasOthers)
        keep(*file, m_path + QStringLiteral(".unreadable"));
    Texts texts = present.texts;
    for (auto changed = m_changes.cbegin(); changed != m_changes.cend(); ++changed) {
        if (changed.value().isNull())
            texts.remove(changed.key());
        else
            texts.insert(changed.key(), changed.value());
    }
    if (!replaceFile(m_path, texts))
        return;
    m_saved = texts;
    m_changes.clear();
}
