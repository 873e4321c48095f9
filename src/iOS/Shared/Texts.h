// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Text/Localization.h"

#include <QObject>
#include <QtQmlIntegration>

/// The visible texts, for QML.
class Texts : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// The text of `key` in the installed translation table, or `defaultText` where no table holds it.
    Q_INVOKABLE QString localized(const QString &key, const QString &defaultText) const
    {
        return ::localized(key.toUtf8().constData(), defaultText);
    }
};
