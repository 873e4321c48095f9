// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/// The built program in a process of its own, with a home folder of a test's. Unless told otherwise it has no session
/// bus and draws into memory. Destroying it kills the program, not its files.
class RunningProgram
{
public:
    explicit RunningProgram(const QTemporaryDir &home, const QString &sessionBus = noBus(),
                            const QString &drawsOn = QStringLiteral("offscreen"));
    ~RunningProgram();
    Q_DISABLE_COPY_MOVE(RunningProgram)

    /// The address of a bus that nothing listens at.
    static QString noBus() { return QStringLiteral("unix:path=/nonexistent"); }
    /// Where the program keeps its events, in `home`.
    static QString storePath(const QTemporaryDir &home);

    bool isRunning() const { return m_process.state() == QProcess::Running; }
    /// The status with which the program ends by itself; -1 when it does not, or crashes.
    int waitForEnd();
    QByteArray standardError() { return m_process.readAllStandardError(); }
    /// SIGKILL: the program gets no chance to tidy up.
    void killAtOnce();

private:
    QProcess m_process;
};
