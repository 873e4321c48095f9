// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Text/UserLocale.h"

#include <QByteArray>

#include <map>

/// The locale and zone of a test's user, put back at its end. Formatters made before keep what they had.
class UserEnvironment
{
public:
    /// In `locale`, such as "es_ES.UTF-8", and in `zone`, such as "Atlantic/Canary".
    UserEnvironment(const QByteArray &locale, const QByteArray &zone)
        : UserEnvironment({{"LC_ALL", locale}, {"TZ", zone}})
    {
    }

    /// With these variables; an empty one is set to nothing, which counts as unset.
    explicit UserEnvironment(const std::map<QByteArray, QByteArray> &variables)
    {
        for (const auto &[name, value] : variables) {
            m_before[name] = qgetenv(name.constData());
            qputenv(name.constData(), value);
        }
        reloadUserLocale();
    }

    ~UserEnvironment()
    {
        for (const auto &[name, value] : m_before)
            qputenv(name.constData(), value);
        reloadUserLocale();
    }
    Q_DISABLE_COPY_MOVE(UserEnvironment)

private:
    std::map<QByteArray, QByteArray> m_before;
};
