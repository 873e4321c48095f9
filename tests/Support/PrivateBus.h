// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QCoreApplication>
#include <QDBusConnection>
#include <QProcess>
#include <QProcessEnvironment>

/// A message bus of the test's own, which dies with it: nothing of the desktop is touched.
class PrivateBus
{
public:
    PrivateBus()
    {
        m_daemon.start(QStringLiteral("dbus-daemon"),
                       {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
        if (!m_daemon.waitForReadyRead())
            qFatal("no bus: %s", qPrintable(m_daemon.errorString()));
        m_address = QString::fromUtf8(m_daemon.readLine().trimmed());
    }

    ~PrivateBus()
    {
        for (const QString &name : std::as_const(m_names))
            QDBusConnection::disconnectFromBus(name);
        m_daemon.terminate();
        m_daemon.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(PrivateBus)

    QString address() const { return m_address; }

    /// A connection of its own, as another program would have.
    QDBusConnection connection(const QString &name)
    {
        m_names.append(name);
        return QDBusConnection::connectToBus(m_address, name);
    }

    /// Ends a connection, as when its program dies.
    static void disconnect(const QString &name) { QDBusConnection::disconnectFromBus(name); }

    /// Starts Debian's Python on a script or module, with this bus as its session and system bus.
    void startPython(QProcess &process, const QStringList &arguments) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_address);
        environment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), m_address);
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QStringLiteral("/usr/bin/python3"), arguments);
    }

private:
    QProcess m_daemon;
    QString m_address;
    QStringList m_names;
};
