// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>

/// The program's name on the session bus: the first process of a session holds it, and a later one asks that one to
/// come to the front. Without a bus every process counts as the first.
class FirstInstance : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// Takes the name `id`, the one of the desktop file, for the life of this object.
    FirstInstance(QDBusConnection bus, const QString &id);
    ~FirstInstance() override;

    /// True when another process holds the name and has answered that it comes to the front: this one has nothing
    /// left to do. A holder that dies or does not answer for five seconds counts as none. Blocks until it is known.
    bool handsOver() const;

public Q_SLOTS:
    /// What a later process, or the desktop, calls from outside. The leave that the desktop gives to come to the front
    /// is handed to the window system.
    Q_SCRIPTABLE void Activate(const QVariantMap &platformData);

Q_SIGNALS:
    /// The program was started once more.
    void startedAgain();

private:
    QDBusConnection m_bus;
    QString m_id;
    bool m_holdsName = false;
};
