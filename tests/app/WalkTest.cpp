// SPDX-License-Identifier: GPL-3.0-or-later
#include "LocalInstitute.h"
#include "PageGenerator.h"
#include "Platform/Clock/SystemClock.h"
#include "RunningProgram.h"
#include "Support/PrivateBus.h"

#include <QDir>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
constexpr int patienceMs = 60'000;
}

/// The program as somebody uses it who hears the screen instead of seeing it. Runs in mount and network namespaces of
/// its own, on a virtual screen.
class WalkTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("XDG_RUNTIME_DIR", m_home.path().toUtf8());
        // What reads the screen is started by the first who asks for it.
        m_bus.makeStartable(u"org.a11y.Bus"_s, u"/usr/libexec/at-spi-bus-launcher"_s);
    }

    void everySectionAndASettingThatStays()
    {
        LocalInstitute institute(LocalInstitute::Certificate::trusted);
        QList<ParsedEarthquake> rows = PageGenerator(1).ordinary(56, m_clock.now());
        institute.setPage(PageGenerator::page(rows));

        const QString log = m_home.filePath(u"notifications"_s);
        QProcess notifications;
        m_bus.startPython(notifications,
                          {u"-m"_s, u"dbusmock"_s, u"--template"_s, u"notification_daemon"_s, u"--logfile"_s, log});
        RunningProgram program(m_home, m_bus.address(), u"xcb"_s);
        QVERIFY(walk("first_start"));
        ParsedEarthquake strong = PageGenerator(2).ordinaryEvent(m_clock.now());
        strong.magnitude = 5.2;
        strong.location = u"EL PASO.ILP"_s;
        rows.prepend(strong);
        institute.setPage(PageGenerator::page(rows));
        QVERIFY(walk("alert"));
        QTRY_VERIFY_WITH_TIMEOUT(contentsOf(log).contains(" Notify \"Orvalia\""), patienceMs);
        QVERIFY2(contentsOf(log).contains("EL PASO.ILP"), contentsOf(log));
        QVERIFY(walk("recent_list"));
        QVERIFY(walk("other_sections"));
        QVERIFY(walk("change_a_setting_and_quit"));
        QCOMPARE(program.waitForEnd(), 0);

        RunningProgram next(m_home, m_bus.address(), u"xcb"_s);
        QVERIFY(walk("second_start"));
        // One that starts beside it hands over to it and ends.
        RunningProgram beside(m_home, m_bus.address(), u"xcb"_s);
        QCOMPARE(beside.waitForEnd(), 0);
        QVERIFY(next.isRunning());
        next.killAtOnce();
        notifications.kill();
        QVERIFY(notifications.waitForFinished());
    }

    void storeThatCannotBeWrittenIsToldAndLeftAlone()
    {
        const QTemporaryDir home;
        const QFileInfo store(RunningProgram::storePath(home));
        const QString path = store.filePath();
        QVERIFY(QDir().mkpath(store.path()));
        QVERIFY(QFile(path).open(QFile::WriteOnly));
        for (const QString &options : {u"bind"_s, u"remount,ro,bind"_s})
            QCOMPARE(QProcess::execute(u"mount"_s, {u"-o"_s, options, path, path}), 0);

        RunningProgram program(home, m_bus.address(), u"xcb"_s);
        QVERIFY(walk("failed_start"));
        QCOMPARE(program.waitForEnd(), 1);
        QCOMPARE(program.standardError(),
                 "Failed to create ModelContainer: " + path.toUtf8() + ": it cannot be written\n");
        QCOMPARE(store.dir().entryList(QDir::Files), QStringList{store.fileName()});
        QCOMPARE(QProcess::execute(u"umount"_s, {path}), 0);
    }

private:
    static QByteArray contentsOf(const QString &path)
    {
        QFile file(path);
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// Takes the steps of this name in walk.py; false when one of them failed.
    bool walk(const char *steps)
    {
        QProcess walker;
        m_bus.startPython(walker, {QStringLiteral(WALKER), QString::fromLatin1(steps)});
        QSignalSpy ended(&walker, &QProcess::finished);
        // The institute answers meanwhile.
        return ended.wait(patienceMs) && walker.exitCode() == 0;
    }

    const SystemClock m_clock;
    QTemporaryDir m_home;
    PrivateBus m_bus;
};

QTEST_GUILESS_MAIN(WalkTest)
#include "WalkTest.moc"
