// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Text/OneLine.h"

#include <QObject>
#include <QtQmlIntegration>

/// What is done to texts from outside before they are shown.
class DisplayText : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// `text` on one line, without control characters and marks that turn the reading direction about.
    Q_INVOKABLE QString oneLine(const QString &text) const { return ::oneLine(text); }
};
