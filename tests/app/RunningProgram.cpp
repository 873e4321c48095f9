// SPDX-License-Identifier: GPL-3.0-or-later
#include "RunningProgram.h"

#include <QDir>
#include <QDirIterator>
#include <QProcessEnvironment>

namespace {
constexpr int patienceMs = 60'000;
}

RunningProgram::RunningProgram(const QTemporaryDir &home, const QString &sessionBus, const QString &drawsOn)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &folder : {QStringLiteral("data"), QStringLiteral("config"), QStringLiteral("cache")}) {
        QDir().mkpath(home.filePath(folder));
        environment.insert(QStringLiteral("XDG_%1_HOME").arg(folder.toUpper()), home.filePath(folder));
    }
    environment.insert(QStringLiteral("HOME"), home.path());
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), home.path());
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), sessionBus);
    environment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), noBus());
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), drawsOn);
    // Without these the accessibility tree stays empty until somebody turns it on for the whole session.
    environment.insert(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
    environment.insert(QStringLiteral("QT_ACCESSIBILITY"), QStringLiteral("1"));
    for (const char *variable : {"http_proxy", "https_proxy", "all_proxy", "HTTP_PROXY", "HTTPS_PROXY", "ALL_PROXY"})
        environment.remove(QString::fromLatin1(variable));
    m_process.setProcessEnvironment(environment);
    m_process.start(QStringLiteral(ORVALIA_PROGRAM), QStringList());
    m_process.waitForStarted();
}

RunningProgram::~RunningProgram()
{
    killAtOnce();
}

QString RunningProgram::storePath(const QTemporaryDir &home)
{
    return home.filePath(QStringLiteral("data/orvalia/orvalia.sqlite"));
}

QByteArray RunningProgram::savedLastUpdated(const QTemporaryDir &home)
{
    QDirIterator files(home.filePath(QStringLiteral("config")), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QFile::ReadOnly))
            continue;
        for (const QByteArray &line : file.readAll().split('\n'))
            if (line.startsWith("lastUpdatedEarthquakes="))
                return line;
    }
    return {};
}

bool RunningProgram::waitForEnd()
{
    return m_process.state() == QProcess::NotRunning || m_process.waitForFinished(patienceMs);
}

int RunningProgram::exitStatus() const
{
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

void RunningProgram::killAtOnce()
{
    m_process.kill();
    m_process.waitForFinished(patienceMs);
}
