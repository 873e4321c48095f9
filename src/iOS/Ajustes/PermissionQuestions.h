// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Permissions/Permissions.h"

#include <QObject>
#include <QtQmlIntegration>

/// The question for a permission that wants an answer now, in words. Several come one after the other.
class PermissionQuestions : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    /// Whether there is a question; while there is none, the texts are empty.
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    Q_PROPERTY(QString iconName READ iconName NOTIFY changed)
    Q_PROPERTY(QString question READ question NOTIFY changed)
    Q_PROPERTY(QString explanation READ explanation NOTIFY changed)

public:
    explicit PermissionQuestions(QObject *parent = nullptr);

    bool isOpen() const { return subject().has_value(); }
    QString iconName() const;
    QString question() const;
    QString explanation() const;

    /// Answers the present question; without one, nothing happens.
    Q_INVOKABLE void answer(bool agrees);

Q_SIGNALS:
    void changed();

private:
    std::optional<Permissions::Subject> subject() const;

    Permissions &m_permissions;
};
