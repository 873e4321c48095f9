// SPDX-License-Identifier: GPL-3.0-or-later
#include "RunningProgram.h"

#include <QDir>
#include <QProcessEnvironment>

using namespace Qt::StringLiterals;

namespace {
constexpr int patienceMs = 60'000;
}

RunningProgram::RunningProgram(const QTemporaryDir &home, const QString &sessionBus, const QString &drawsOn)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &folder : {u"data"_s, u"config"_s, u"cache"_s}) {
        QDir().mkpath(home.filePath(folder));
        environment.insert(u"XDG_%1_HOME"_s.arg(folder.toUpper()), home.filePath(folder));
    }
    environment.insert(u"HOME"_s, home.path());
    environment.insert(u"XDG_RUNTIME_DIR"_s, home.path());
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, sessionBus);
    environment.insert(u"DBUS_SYSTEM_BUS_ADDRESS"_s, noBus());
    environment.insert(u"QT_QPA_PLATFORM"_s, drawsOn);
    // Without these the accessibility tree stays empty until somebody turns it on for the whole session.
    environment.insert(u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s, u"1"_s);
    environment.insert(u"QT_ACCESSIBILITY"_s, u"1"_s);
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
    return home.filePath(u"data/orvalia/orvalia.sqlite"_s);
}

int RunningProgram::waitForEnd()
{
    const bool hasEnded = !isRunning() || m_process.waitForFinished(patienceMs);
    return hasEnded && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

void RunningProgram::killAtOnce()
{
    m_process.kill();
    m_process.waitForFinished(patienceMs);
}
