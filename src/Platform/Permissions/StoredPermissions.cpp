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
    , m_answers(path)
{
}

QString StoredPermissions::standardPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + QStringLiteral("/permissions.ini");
}

Permissions::Answer StoredPermissions::answer(Subject subject) const
{
    const QString saved = m_answers.stringValue(nameOf(subject)).value_or(QString());
    for (const Answer known : {Answer::denied, Answer::authorized})
        if (saved == nameOf(known))
            return known;
    return Answer::notDetermined;
}

void StoredPermissions::remember(Subject subject, Answer answer)
{
    m_answers.setString(nameOf(subject), nameOf(answer));
}
