// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Clock/SystemClock.h"
#include "Support/FakeClock.h"
#include "Support/Table.h"

#include <QAbstractEventDispatcher>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QSignalSpy>
#include <QTest>

#include <ctime>

using namespace std::chrono_literals;

namespace {
/// A clock, and what lets its time pass until `isDone`.
struct ClockUnderTest
{
    std::unique_ptr<Clock> clock;
    std::function<bool(const std::function<bool()> &isDone)> run;
};

ClockUnderTest made(bool isFake)
{
    if (!isFake)
        return {std::make_unique<SystemClock>(), [](const auto &isDone) { return QTest::qWaitFor(isDone, 10000); }};
    auto clock = std::make_unique<FakeClock>();
    const auto run = [fake = clock.get()](const std::function<bool()> &isDone) {
        for (int i = 0; i < 1000 && !isDone(); ++i)
            fake->advance(1ms);
        return isDone();
    };
    return {std::move(clock), run};
}
}

/// The fake and the real clock keep the same promises.
class ClockContractTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sleepsWakeInOrder_data() { clocks(); }
    void sleepsWakeInOrder()
    {
        start();
        QString order;
        const auto write = [&order](char letter) { return [&order, letter] { order += QLatin1Char(letter); }; };
        m_test.clock->sleep(6ms, [&] {
            order += u'f';
            m_test.clock->sleep(1ms, write('g'));
        });
        m_test.clock->sleep(0ms, write('a'));
        m_test.clock->sleep(-5ms, write('b'));
        m_test.clock->sleep(3ms, write('d'));
        m_test.clock->sleep(0ms, write('c'));
        m_test.clock->sleep(3ms, write('e'));
        QVERIFY(order.isEmpty());
        QVERIFY(m_test.run([&order] { return order.size() == 7; }));
        QCOMPARE(order, QStringLiteral("abcdefg"));
    }

    void hurriedSleepWakesOnceAndNotInsideTheCall_data() { clocks(); }
    void hurriedSleepWakesOnceAndNotInsideTheCall()
    {
        start();
        QString order;
        const Clock::SleepId slow = m_test.clock->sleep(24h, [&order] { order += u's'; });
        m_test.clock->sleep(24h * 365 * 300, [&order] { order += u'x'; });
        m_test.clock->sleep(0ms, [&order] { order += u'a'; });
        m_test.clock->hurry(slow);
        m_test.clock->hurry(slow);
        QVERIFY(order.isEmpty());
        QVERIFY(m_test.run([&order] { return order.size() == 2; }));
        m_test.clock->hurry(slow);
        m_test.clock->hurry(0);
        m_test.clock->sleep(1ms, [&order] { order += u'b'; });
        QVERIFY(m_test.run([&order] { return order.endsWith(u'b'); }));
        QCOMPARE(order, QStringLiteral("asb"));
    }
    void realSleepIsNotTooShort()
    {
        SystemClock clock;
        QElapsedTimer timer;
        bool isAwake = false;
        timer.start();
        clock.sleep(30ms, [&isAwake] { isAwake = true; });
        QTRY_VERIFY(isAwake);
        QVERIFY2(timer.nsecsElapsed() >= 30'000'000, qPrintable(QString::number(timer.nsecsElapsed())));
    }

    void realClockRestsBetweenWakes()
    {
        SystemClock clock;
        const QSignalSpy turns(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake);
        bool isAwake = false;
        clock.sleep(1ms, [] {});
        clock.sleep(100ms, [&isAwake] { isAwake = true; });
        QTRY_VERIFY(isAwake);
        // A few dozen at most; a clock that asks again and again makes thousands.
        QVERIFY2(turns.count() < 200, qPrintable(QString::number(turns.count())));
    }

    void realClockGoesOnInSuspension()
    {
        const SystemClock clock;
        QByteArray timers;
        for (const QString &name : QDir(QStringLiteral("/proc/self/fdinfo")).entryList(QDir::Files)) {
            QFile file(QStringLiteral("/proc/self/fdinfo/") + name);
            if (file.open(QFile::ReadOnly))
                timers += file.readAll();
        }
        QVERIFY2(timers.contains("clockid: " + QByteArray::number(CLOCK_BOOTTIME) + '\n'), timers);
    }

    void realClockTellsTheWallTime()
    {
        const auto before = std::chrono::system_clock::now();
        const Instant now = SystemClock().now();
        QVERIFY(now >= std::chrono::floor<std::chrono::milliseconds>(before));
        QVERIFY(now <= std::chrono::system_clock::now());
    }

    void endOfTheClockDropsItsSleeps()
    {
        bool isAwake = false;
        {
            SystemClock clock;
            clock.sleep(0ms, [&isAwake] { isAwake = true; });
            clock.sleep(1ms, [&isAwake] { isAwake = true; });
        }
        SystemClock other;
        bool isOtherAwake = false;
        other.sleep(5ms, [&isOtherAwake] { isOtherAwake = true; });
        QTRY_VERIFY(isOtherAwake);
        QVERIFY(!isAwake);
    }

private:
    static void clocks()
    {
        const Table<bool> row;
        row("fake", true);
        row("real", false);
    }

    void start() { m_test = made(std::get<bool>(Table<bool>::current())); }

    ClockUnderTest m_test;
};

QTEST_GUILESS_MAIN(ClockContractTest)
#include "ClockContractTest.moc"
