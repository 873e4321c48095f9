// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Permissions/StoredPermissions.h"

#include <QMetaEnum>
#include <QStandardPaths>

namespace {
template<class Enum>
QString nameOf(Enum value)
{
    return QString::fromLatin1(QMetaEnum::fromType<Enum>().valueToKey(int(value)));
}
}

StoredPermissions::StoredPermissions(const QString &path, QObject *parent)
    : Permissions(parent)
    , m_settings(path, QSettings::IniFormat)
{
    m_settings.setFallbacksEnabled(false);
}

QString StoredPermissions::standardPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + QStringLiteral("/permissions.ini");
}

Permissions::Answer StoredPermissions::answer(Subject subject) const
{
    const QString saved = m_settings.value(nameOf(subject)).toString();
    for (const Answer known : {Answer::denied, Answer::authorized})
        if (saved == nameOf(known))
            return known;
    return Answer::notDetermined;
}

void StoredPermissions::remember(Subject subject, Answer answer)
{
    m_settings.setValue(nameOf(subject), nameOf(answer));
    m_settings.sync();
}
