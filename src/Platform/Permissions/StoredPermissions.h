// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Permissions/Permissions.h"
#include "Platform/UserDefaults/SettingsUserDefaults.h"

/// The answers in an INI file, each in the file when setAnswer() returns. What cannot be read counts as not determined;
/// a write that fails leaves the file as it was and the answer in memory.
class StoredPermissions : public Permissions
{
    Q_OBJECT

public:
    /// Over the file `path`, made with its folder by the first answer.
    explicit StoredPermissions(const QString &path, QObject *parent = nullptr);

    /// "permissions.ini" in the application's configuration folder.
    static QString standardPath();

    Answer answer(Subject subject) const override;

protected:
    void remember(Subject subject, Answer answer) override;

private:
    SettingsUserDefaults m_answers;
};
