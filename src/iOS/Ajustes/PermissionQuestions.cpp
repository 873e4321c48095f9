// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Ajustes/PermissionQuestions.h"

#include "Platform/Support/Platform.h"
#include "Platform/Text/Localization.h"

PermissionQuestions::PermissionQuestions(QObject *parent)
    : QObject(parent)
    , m_permissions(Platform::current().permissions)
{
    connect(&m_permissions, &Permissions::questionPending, this, &PermissionQuestions::changed);
    connect(&m_permissions, &Permissions::answerChanged, this, &PermissionQuestions::changed);
}

std::optional<Permissions::Subject> PermissionQuestions::subject() const
{
    for (const Permissions::Subject subject : {Permissions::Subject::notifications, Permissions::Subject::location})
        if (m_permissions.isPending(subject))
            return subject;
    return std::nullopt;
}

QString PermissionQuestions::iconName() const
{
    if (!isOpen())
        return {};
    return subject() == Permissions::Subject::notifications ? QStringLiteral("bell.fill")
                                                            : QStringLiteral("location.fill");
}

QString PermissionQuestions::question() const
{
    if (!isOpen())
        return {};
    if (subject() == Permissions::Subject::notifications)
        return localized("permission.notifications.question",
                         QStringLiteral("¿Permitir que orvalia envíe notificaciones?"));
    return localized("permission.location.question", QStringLiteral("¿Permitir que orvalia use tu ubicación?"));
}

QString PermissionQuestions::explanation() const
{
    if (!isOpen())
        return {};
    if (subject() == Permissions::Subject::notifications)
        return localized("permission.notifications.explanation",
                         QStringLiteral("Los avisos de sismos pueden incluir texto y sonido. La respuesta se puede "
                                        "cambiar más tarde en Permisos."));
    return localized("permission.location.explanation",
                     QStringLiteral("Solo sirve para avisarte de sismos dentro del radio elegido. La posición no sale "
                                    "de este equipo."));
}

void PermissionQuestions::answer(bool agrees)
{
    if (const auto asked = subject())
        m_permissions.setAnswer(*asked, agrees ? Permissions::Answer::authorized : Permissions::Answer::denied);
}
