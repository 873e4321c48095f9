// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Ajustes/PermissionChoice.h"

#include "Platform/Support/Platform.h"
#include "Platform/Text/Localization.h"

namespace {
enum Row { authorizedRow, deniedRow, notAskedRow };
}

PermissionChoice::PermissionChoice(QObject *parent)
    : QObject(parent)
    , m_permissions(Platform::current().permissions)
{
    connect(&m_permissions, &Permissions::answerChanged, this, &PermissionChoice::changed);
    connect(this, &PermissionChoice::changed, this, &PermissionChoice::update);
    update();
}

int PermissionChoice::current() const
{
    switch (m_permissions.answer(asked())) {
    case Permissions::Answer::authorized:
        return authorizedRow;
    case Permissions::Answer::denied:
        return deniedRow;
    case Permissions::Answer::notDetermined:
        return notAskedRow;
    }
    Q_UNREACHABLE();
}

void PermissionChoice::setCurrent(int row)
{
    if (row == authorizedRow)
        m_permissions.setAnswer(asked(), Permissions::Answer::authorized);
    else if (row == deniedRow)
        m_permissions.setAnswer(asked(), Permissions::Answer::denied);
}

Permissions::Subject PermissionChoice::asked() const
{
    switch (m_subject) {
    case Subject::Notifications:
        return Permissions::Subject::notifications;
    case Subject::Location:
        return Permissions::Subject::location;
    }
    Q_UNREACHABLE();
}

void PermissionChoice::update()
{
    QList<PickerChoice> choices = {{localized("permissions.authorized", QStringLiteral("Permitido"))},
                                   {localized("permissions.denied", QStringLiteral("Denegado"))}};
    if (m_permissions.answer(asked()) == Permissions::Answer::notDetermined)
        choices.append({localized("permissions.notDetermined", QStringLiteral("Sin preguntar"))});
    m_choices.setChoices(choices);
}
