// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

/// A message bus of the test's own, which dies with it: nothing of the desktop is touched. It starts no service by
/// itself but those that the test names, whatever is installed on this machine.
class PrivateBus
{
public:
    PrivateBus()
    {
        write(QStringLiteral("bus.conf"),
              QStringLiteral("<busconfig><type>session</type><listen>unix:dir=%1</listen><servicedir>%1</servicedir>"
                             "<policy context='default'><allow send_destination='*' eavesdrop='true'/>"
                             "<allow eavesdrop='true'/><allow own='*'/></policy>"
                             "<limit name='max_replies_per_connection'>50000</limit></busconfig>")
                  .arg(m_folder.path()));
        m_daemon.start(QStringLiteral("dbus-daemon"),
                       {QStringLiteral("--config-file=") + m_folder.filePath(QStringLiteral("bus.conf")),
                        QStringLiteral("--nofork"), QStringLiteral("--print-address")});
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

    /// Returns when the bus has handled everything that was sent on this connection, and this program what had come by
    /// then. A blocking call would not do: its answer overtakes others.
    static void goRound(const QString &name)
    {
        const QString bus = QStringLiteral("org.freedesktop.DBus");
        const QDBusMessage question =
            QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus, QStringLiteral("GetId"));
        // Inside Qt a change of a service's owner takes more steps than an answer.
        for (int round = 0; round < 3; ++round) {
            const QDBusPendingCallWatcher watcher(QDBusConnection(name).asyncCall(question));
            QEventLoop loop;
            QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
            loop.exec();
        }
    }

    /// Returns when what one connection has sent is with the objects of another.
    static void letArrive(const QString &from, const QString &to)
    {
        goRound(from);
        goRound(to);
    }

    /// Lets the bus start `command` for whoever calls the service of that name.
    void makeStartable(const QString &name, const QString &command) const
    {
        write(name + QStringLiteral(".service"),
              QStringLiteral("[D-BUS Service]\nName=%1\nExec=%2\n").arg(name, command));
    }

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
    void write(const QString &name, const QString &text) const
    {
        QFile file(m_folder.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
            qFatal("no bus: %s", qPrintable(file.errorString()));
    }

    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
    QStringList m_names;
};
