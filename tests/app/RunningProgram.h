// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/// The built program in a process of its own, with a home folder that nothing else uses and no session bus. It draws
/// into memory. Destroying it kills the program, not its files.
class RunningProgram
{
public:
    explicit RunningProgram(const QTemporaryDir &home);
    ~RunningProgram();
    Q_DISABLE_COPY_MOVE(RunningProgram)

    /// Where the program keeps its events, in `home`.
    static QString storePath(const QTemporaryDir &home);
    /// What it has saved as the moment of its last refresh; empty when it has not.
    static QByteArray savedLastUpdated(const QTemporaryDir &home);

    bool isRunning() const { return m_process.state() == QProcess::Running; }
    /// Waits for the program to end by itself; false when it does not.
    bool waitForEnd();
    int exitStatus() const;
    QByteArray standardError() { return m_process.readAllStandardError(); }
    /// SIGKILL: the program gets no chance to tidy up.
    void killAtOnce();

private:
    QProcess m_process;
};
