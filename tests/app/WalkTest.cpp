// SPDX-License-Identifier: GPL-3.0-or-later
#include "LocalInstitute.h"
#include "PageGenerator.h"
#include "RunningProgram.h"
#include "Support/PrivateBus.h"

#include <QSignalSpy>
#include <QTest>

namespace {
constexpr int patienceMs = 60'000;

Instant now()
{
    return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}
}

/// One walk through the program as somebody takes it who hears the screen instead of seeing it. Runs in mount and
/// network namespaces of its own, on a virtual screen.
class WalkTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("XDG_RUNTIME_DIR", m_home.path().toUtf8());
        // What reads the screen is started by the first who asks for it.
        m_bus.makeStartable(QStringLiteral("org.a11y.Bus"), QStringLiteral("/usr/libexec/at-spi-bus-launcher"));
    }

    void everySectionAndASettingThatStays()
    {
        LocalInstitute institute(LocalInstitute::Certificate::trusted);
        QList<ParsedEarthquake> rows = PageGenerator(1).ordinary(56, now());
        institute.setPage(PageGenerator::page(rows));

        const QString log = m_home.filePath(QStringLiteral("notifications"));
        QProcess notifications;
        m_bus.startPython(notifications,
                          {QStringLiteral("-m"), QStringLiteral("dbusmock"), QStringLiteral("--template"),
                           QStringLiteral("notification_daemon"), QStringLiteral("--logfile"), log});
        RunningProgram program(m_home, m_bus.address(), QStringLiteral("xcb"));
        QVERIFY(walk("first_start"));
        ParsedEarthquake strong = PageGenerator(2).ordinaryEvent(now());
        strong.magnitude = 5.2;
        strong.location = QStringLiteral("EL PASO.ILP");
        rows.prepend(strong);
        institute.setPage(PageGenerator::page(rows));
        QVERIFY(walk("alert"));
        QTRY_VERIFY_WITH_TIMEOUT(contentsOf(log).contains(" Notify \"Orvalia\""), patienceMs);
        QVERIFY2(contentsOf(log).contains("EL PASO.ILP"), contentsOf(log));
        QVERIFY(walk("recent_list"));
        QVERIFY(walk("other_sections"));
        QVERIFY(walk("change_a_setting_and_quit"));
        QVERIFY(program.waitForEnd());
        QCOMPARE(program.exitStatus(), 0);

        RunningProgram next(m_home, m_bus.address(), QStringLiteral("xcb"));
        QVERIFY(walk("second_start"));
        next.killAtOnce();
        notifications.kill();
        QVERIFY(notifications.waitForFinished());
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

    QTemporaryDir m_home;
    PrivateBus m_bus;
};

QTEST_GUILESS_MAIN(WalkTest)
#include "WalkTest.moc"
