// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Clock/SystemClock.h"
#include "Support/FakeClock.h"
#include "Support/Table.h"

#include <QDir>
#include <QFile>

#include <ctime>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {
/// The clock that the row names, and what lets its time pass.
class ClockUnderTest
{
public:
    Clock *operator->() { return m_isFake ? static_cast<Clock *>(&m_fake) : &m_real; }

    bool runs(const std::function<bool()> &isDone)
    {
        const auto turn = [&] {
            if (m_isFake)
                m_fake.advance(1ms);
            return isDone();
        };
        return QTest::qWaitFor(turn);
    }

private:
    bool m_isFake = std::get<bool>(Table<bool>::current());
    FakeClock m_fake;
    SystemClock m_real;
};

void clocks()
{
    const Table<bool> row;
    row("fake", true);
    row("real", false);
}
}

class SystemClockTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sleepsWakeInOrder_data() { clocks(); }
    void sleepsWakeInOrder()
    {
        ClockUnderTest clock;
        QString order;
        const auto write = [&order](char letter) { return [&order, letter] { order += QLatin1Char(letter); }; };
        clock->sleep(6ms, [&] {
            order += u'f';
            clock->sleep(1ms, write('g'));
        });
        clock->sleep(0ms, write('a'));
        clock->sleep(-5ms, write('b'));
        clock->sleep(3ms, write('d'));
        clock->sleep(0ms, write('c'));
        clock->sleep(3ms, write('e'));
        QVERIFY(order.isEmpty());
        QVERIFY(clock.runs([&order] { return order.size() == 7; }));
        QCOMPARE(order, u"abcdefg"_s);
    }

    void hurriedSleepWakesOnceAndNotInsideTheCall_data() { clocks(); }
    void hurriedSleepWakesOnceAndNotInsideTheCall()
    {
        ClockUnderTest clock;
        QString order;
        const auto write = [&order](char letter) { return [&order, letter] { order += QLatin1Char(letter); }; };
        const Clock::SleepId slow = clock->sleep(24h, write('s'));
        clock->sleep(24h * 365 * 300, write('x'));
        const Clock::SleepId due = clock->sleep(0ms, write('a'));
        clock->hurry(slow);
        clock->sleep(0ms, write('b'));
        clock->hurry(slow);
        clock->hurry(due);
        QVERIFY(order.isEmpty());
        QVERIFY(clock.runs([&order] { return order.size() == 3; }));
        clock->hurry(slow);
        clock->hurry(0);
        clock->sleep(1ms, write('c'));
        QVERIFY(clock.runs([&order] { return order.endsWith(u'c'); }));
        QCOMPARE(order, u"asbc"_s);
    }

    void clockGoesOnInSuspension()
    {
        const SystemClock clock;
        QByteArray timers;
        for (const QString &name : QDir(u"/proc/self/fdinfo"_s).entryList(QDir::Files)) {
            QFile file(u"/proc/self/fdinfo/"_s + name);
            if (file.open(QFile::ReadOnly))
                timers += file.readAll();
        }
        QVERIFY2(timers.contains("clockid: " + QByteArray::number(CLOCK_BOOTTIME) + '\n'), timers);
    }
};

QTEST_GUILESS_MAIN(SystemClockTest)
#include "SystemClockTest.moc"
