// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Permissions/Permissions.h"
#include "iOS/Shared/PickerModel.h"

#include <QObject>
#include <QtQmlIntegration>

/// One remembered answer as a choice that can be changed. That it was never asked for is a choice only while it is so.
class PermissionChoice : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Subject subject MEMBER m_subject NOTIFY changed REQUIRED)
    Q_PROPERTY(PickerModel *choices READ choices CONSTANT)
    Q_PROPERTY(int current READ current WRITE setCurrent NOTIFY changed)

public:
    enum class Subject { Notifications, Location };
    Q_ENUM(Subject)

    explicit PermissionChoice(QObject *parent = nullptr);

    PickerModel *choices() { return &m_choices; }
    int current() const;
    /// Remembers the answer of this row.
    void setCurrent(int row);

Q_SIGNALS:
    void changed();

private:
    Permissions::Subject asked() const;
    void update();

    Permissions &m_permissions;
    Subject m_subject = Subject::Notifications;
    PickerModel m_choices;
};
