// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/UserDefaults/SettingsUserDefaults.h"
#include "Support/Table.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {
enum class Fault { none, diskFull, error, shortWrite, kill };

Fault fault = Fault::none;
int callsLeft = 0;
bool hasStruck = false;

/// Counts a call by which this process reaches its files. True when it is to fail: a full disk stays full, but takes
/// back nothing.
bool strikes(bool needsRoom)
{
    const bool isConcerned = needsRoom || fault == Fault::error || fault == Fault::kill;
    if (fault == Fault::none || !isConcerned || --callsLeft > 0 || (callsLeft < 0 && fault == Fault::error))
        return false;
    hasStruck = true;
    if (fault == Fault::kill)
        std::raise(SIGKILL);
    errno = fault == Fault::error ? EIO : ENOSPC;
    return true;
}

template<class Function>
Function *next(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}
}

// The functions of the C library, as this program and its libraries call them.
extern "C" {
int open64(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = va_arg(arguments, mode_t);
    va_end(arguments);
    return strikes((flags & O_CREAT) != 0) ? -1 : next<int(const char *, int, ...)>("open64")(path, flags, mode);
}

ssize_t write(int file, const void *bytes, size_t count)
{
    const auto realWrite = next<ssize_t(int, const void *, size_t)>("write");
    if (!strikes(true))
        return realWrite(file, bytes, count);
    return fault == Fault::shortWrite && callsLeft == 0 ? realWrite(file, bytes, count / 2) : -1;
}

int fdatasync(int file)
{
    return strikes(false) ? -1 : next<int(int)>("fdatasync")(file);
}

int rename(const char *from, const char *to) noexcept
{
    return strikes(false) ? -1 : next<int(const char *, const char *)>("rename")(from, to);
}
}

Q_DECLARE_METATYPE(Fault)

/// Writes of the settings file under faults at every call that they make to the disk.
class SettingsFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void faultAtAnyCallLeavesBeforeOrAfter_data()
    {
        const Table<Fault> row;
        row("disk full", Fault::diskFull);
        row("error", Fault::error);
        row("short write", Fault::shortWrite);
        row("killed", Fault::kill);
    }

    void faultAtAnyCallLeavesBeforeOrAfter()
    {
        const auto [wanted] = Table<Fault>::current();
        const QString key = QStringLiteral("settings.value");
        const QString other = QStringLiteral("settings.other");
        bool isStruck = true;
        int strikesSeen = 0;
        for (int call = 1; isStruck; ++call) {
            const QTemporaryDir folder;
            const QString path = folder.filePath(QStringLiteral("settings.ini"));
            SettingsUserDefaults defaults(path);
            defaults.setString(other, QString(2000, u'x'));
            defaults.setDouble(key, 1);
            const QByteArray before = contents(path);
            const QByteArray after = QByteArray(before).replace("number:1.0", "number:2.0");
            QVERIFY(before != after);
            isStruck = isStruckAt(call, wanted, [&] { defaults.setDouble(key, 2); });
            if (wanted != Fault::kill)
                QCOMPARE(defaults.doubleValue(key), 2.0);
            const QByteArray left = contents(path);
            QVERIFY2(left == after || (isStruck && left == before), left);
            // The next write of anything brings everything; a program that was killed knows nothing of the value.
            if (wanted == Fault::kill)
                defaults.setDouble(key, 2);
            else
                defaults.setString(other, QString(2000, u'x'));
            QCOMPARE(contents(path), after);
            strikesSeen += isStruck ? 1 : 0;
        }
        QVERIFY2(strikesSeen > 1, qPrintable(QString::number(strikesSeen)));
    }

    void twoProcessesLoseNothing()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("settings.ini"));
        constexpr int writes = 200;
        const auto writeAll = [&path](const char *whose) {
            SettingsUserDefaults defaults(path);
            for (int i = 0; i < writes; ++i)
                defaults.setDouble(QString::fromLatin1(whose) + QString::number(i), i);
        };
        const pid_t child = fork();
        if (child == 0) {
            writeAll("child");
            _exit(0);
        }
        writeAll("parent");
        QCOMPARE(waitpid(child, nullptr, 0), child);
        QCOMPARE(contents(path).count("number:"), 2 * writes);
    }

private:
    /// Does `work`, in a process of its own where that is to be killed. True when the fault has struck at this call.
    template<class Work>
    static bool isStruckAt(int call, Fault wanted, Work work)
    {
        const pid_t child = wanted == Fault::kill ? fork() : -1;
        int status = 0;
        if (child > 0)
            return waitpid(child, &status, 0) == child && WIFSIGNALED(status);
        fault = wanted;
        callsLeft = call;
        hasStruck = false;
        work();
        fault = Fault::none;
        if (child == 0)
            _exit(0);
        return hasStruck;
    }

    static QByteArray contents(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }
};

QTEST_GUILESS_MAIN(SettingsFaultsTest)
#include "SettingsFaultsTest.moc"
