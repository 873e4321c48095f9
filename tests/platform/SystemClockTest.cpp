// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Clock/SystemClock.h"

#include <QAbstractEventDispatcher>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QSignalSpy>
#include <QTest>

#include <ctime>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class SystemClockTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sleepsWakeInOrder()
    {
        SystemClock clock;
        QString order;
        const auto write = [&order](char letter) { return [&order, letter] { order += QLatin1Char(letter); }; };
        clock.sleep(6ms, [&] {
            order += u'f';
            clock.sleep(1ms, write('g'));
        });
        clock.sleep(0ms, write('a'));
        clock.sleep(-5ms, write('b'));
        clock.sleep(3ms, write('d'));
        clock.sleep(0ms, write('c'));
        clock.sleep(3ms, write('e'));
        QVERIFY(order.isEmpty());
        QTRY_COMPARE(order, u"abcdefg"_s);
    }

    void hurriedSleepWakesOnceAndNotInsideTheCall()
    {
        SystemClock clock;
        QString order;
        const auto write = [&order](char letter) { return [&order, letter] { order += QLatin1Char(letter); }; };
        const Clock::SleepId slow = clock.sleep(24h, write('s'));
        clock.sleep(24h * 365 * 300, write('x'));
        clock.sleep(0ms, write('a'));
        clock.hurry(slow);
        clock.hurry(slow);
        QVERIFY(order.isEmpty());
        QTRY_COMPARE(order, u"as"_s);
        clock.hurry(slow);
        clock.hurry(0);
        clock.sleep(1ms, write('b'));
        QTRY_COMPARE(order, u"asb"_s);
    }

    /// Of the turns of the loop there are a few dozen at most; a clock that asks again and again makes thousands.
    void sleepIsNotTooShortAndTheClockRestsInIt()
    {
        SystemClock clock;
        const QSignalSpy turns(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake);
        QElapsedTimer timer;
        bool isAwake = false;
        timer.start();
        clock.sleep(1ms, [] {});
        clock.sleep(100ms, [&isAwake] { isAwake = true; });
        QTRY_VERIFY(isAwake);
        QVERIFY2(timer.nsecsElapsed() >= 100'000'000, qPrintable(QString::number(timer.nsecsElapsed())));
        QVERIFY2(turns.count() < 200, qPrintable(QString::number(turns.count())));
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
