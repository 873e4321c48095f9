// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Workspace/DesktopWorkspace.h"
#include "Support/Table.h"

#include <QDesktopServices>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

class DesktopWorkspaceTest : public QObject
{
    Q_OBJECT

public:
    /// Stands for the desktop's program.
    Q_INVOKABLE void take(const QUrl &url) { m_taken.append(url); }

private Q_SLOTS:
    void addressGoesToTheDesktopAndThePermissionsToTheirOwner()
    {
        const QUrl url(u"x-orvalia-test:settings"_s);
        QDesktopServices::setUrlHandler(url.scheme(), this, "take");
        DesktopWorkspace workspace;
        QVERIFY2(!workspace.open(Workspace::permissionsUrl()), "there is no owner yet");
        const QSignalSpy permissions(&workspace, &DesktopWorkspace::permissionsRequested);
        QVERIFY(workspace.open(url));
        QDesktopServices::unsetUrlHandler(url.scheme());
        QCOMPARE(m_taken, QList<QUrl>{url});
        QCOMPARE(permissions.count(), 0);
        QVERIFY(workspace.open(Workspace::permissionsUrl()));
        QCOMPARE(permissions.count(), 1);
    }

    void notificationSettingsAreThoseOfTheDesktopInUse_data()
    {
        const Table<QByteArray, QString, QString> row;
        row.unnamed("ubuntu:GNOME", "gnome-control-center", "notifications");
        row.unnamed("KDE", "systemsettings", "kcm_notifications");
        row.unnamed("xfce", "xfce4-notifyd-config", "");
        row.unnamed("KDE", "gnome-control-center", "none");
        row.unnamed("", "gnome-control-center", "none");
    }

    void notificationSettingsAreThoseOfTheDesktopInUse()
    {
        const auto [desktop, program, arguments] = Table<QByteArray, QString, QString>::current();
        const QByteArray path = qgetenv("PATH");
        QTemporaryDir folder;
        QFile script(folder.filePath(program));
        QVERIFY(script.open(QIODevice::WriteOnly) && script.write("#!/bin/sh\necho -n $* > \"$0.started\"\n") > 0);
        script.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        script.close();
        qputenv("PATH", folder.path().toUtf8());
        qputenv("XDG_CURRENT_DESKTOP", desktop);
        DesktopWorkspace workspace;
        const bool has = workspace.hasNotificationSettings();
        const bool opened = workspace.openNotificationSettings();
        qputenv("PATH", path);
        qunsetenv("XDG_CURRENT_DESKTOP");
        QCOMPARE(has, arguments != u"none"_s);
        QCOMPARE(opened, has);
        const auto started = [&] {
            QFile said(script.fileName() + u".started"_s);
            return said.open(QIODevice::ReadOnly) ? QString::fromUtf8(said.readAll()) : u"none"_s;
        };
        QTRY_COMPARE(started(), arguments);
    }

private:
    QList<QUrl> m_taken;
};

QTEST_MAIN(DesktopWorkspaceTest)
#include "DesktopWorkspaceTest.moc"
