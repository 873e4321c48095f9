// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/UserDefaults/UserDefaults.h"

#include <QMap>

/// Saved values in one INI file, each with its type before it ("number:37.5"), so that a text which looks like a
/// number stays a text. Every write replaces the file as a whole, and takes in first what other processes have
/// written; one that fails is tried again with the next.
///
/// What cannot be read counts as unset. A file with lines that are no settings at all is kept before a write drops
/// them: at the end of the file beside it that has ".unreadable" behind its name.
class SettingsUserDefaults : public UserDefaults
{
public:
    /// Over the file `path`, made with its folder by the first write.
    explicit SettingsUserDefaults(const QString &path);

    /// "settings.ini" in the application's configuration folder.
    static QString standardPath();

    QVariant object(const QString &key) const override;
    void setObject(const QString &key, const QVariant &value) override;
    void removeObject(const QString &key) override;

private:
    /// By key, each with its tag; a null text stands for a value that was removed.
    using Texts = QMap<QString, QString>;

    void change(const QString &key, const QString &text);

    QString m_path;
    Texts m_saved;
    /// What the file does not hold yet.
    Texts m_changes;
};
