// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Clock/SystemClock.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#ifdef Q_OS_LINUX
#include <QSocketNotifier>

#include <sys/timerfd.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#else
#include <QTimer>
#endif

using namespace std::chrono_literals;

namespace {
/// Nobody waits for longer, and sums of times stay far from the end of the number.
constexpr std::chrono::milliseconds longestSleep = 24h * 36500;
}

#ifdef Q_OS_LINUX

/// A timer of the kernel's clock that goes on in suspension, which QTimer's does not.
class SystemClock::Alarm
{
public:
    explicit Alarm(SystemClock *clock)
        : m_descriptor(::timerfd_create(CLOCK_BOOTTIME, TFD_CLOEXEC | TFD_NONBLOCK))
        , m_notifier(m_descriptor, QSocketNotifier::Read)
    {
        if (m_descriptor < 0)
            qFatal("no timer to be had: %s", std::strerror(errno));
        connect(&m_notifier, &QSocketNotifier::activated, clock, &SystemClock::ring);
    }

    ~Alarm()
    {
        m_notifier.setEnabled(false);
        ::close(m_descriptor);
    }
    Q_DISABLE_COPY_MOVE(Alarm)

    /// Time since the machine was started.
    Moment time() const
    {
        timespec spec{};
        ::clock_gettime(CLOCK_BOOTTIME, &spec);
        return std::chrono::seconds(spec.tv_sec) + std::chrono::nanoseconds(spec.tv_nsec);
    }

    /// Rings once at `moment`, or soon when that has passed; never without one. Takes back an earlier setting, and
    /// the mark of having rung with it.
    void set(std::optional<Moment> moment)
    {
        itimerspec spec{};
        if (moment) {
            const auto seconds = std::chrono::floor<std::chrono::seconds>(*moment);
            spec.it_value = {time_t(seconds.count()), long((*moment - seconds).count())};
        }
        ::timerfd_settime(m_descriptor, TFD_TIMER_ABSTIME, &spec, nullptr);
    }

private:
    int m_descriptor;
    QSocketNotifier m_notifier;
};

#else

class SystemClock::Alarm
{
public:
    explicit Alarm(SystemClock *clock)
    {
        m_timer.setSingleShot(true);
        m_timer.setTimerType(Qt::PreciseTimer);
        connect(&m_timer, &QTimer::timeout, clock, &SystemClock::ring);
    }

    Moment time() const { return std::chrono::steady_clock::now().time_since_epoch(); }

    void set(std::optional<Moment> moment)
    {
        m_timer.stop();
        if (moment)
            m_timer.start(std::clamp(std::chrono::ceil<std::chrono::milliseconds>(*moment - time()), 0ms,
                                     std::chrono::milliseconds(24h)));
    }

private:
    QTimer m_timer;
};

#endif

SystemClock::SystemClock()
    : m_alarm(std::make_unique<Alarm>(this))
{
}

SystemClock::~SystemClock() = default;

Instant SystemClock::now() const
{
    return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

Clock::SleepId SystemClock::sleep(std::chrono::milliseconds length, std::function<void()> wake)
{
    const SleepId id = ++m_serial;
    m_sleepers.emplace(id, Sleeper{m_alarm->time() + std::clamp(length, 0ms, longestSleep), std::move(wake)});
    if (length > 0ms)
        setAlarm();
    else
        post(id);
    return id;
}

void SystemClock::hurry(SleepId id)
{
    if (m_sleepers.contains(id))
        post(id);
}

void SystemClock::ring()
{
    std::vector<std::pair<Moment, SleepId>> due;
    const Moment time = m_alarm->time();
    for (const auto &[id, sleeper] : m_sleepers)
        if (!sleeper.isPosted && sleeper.end <= time)
            due.emplace_back(sleeper.end, id);
    std::ranges::sort(due);
    for (const auto &[end, id] : due)
        post(id);
    setAlarm();
}

void SystemClock::setAlarm()
{
    std::optional<Moment> next;
    for (const auto &[id, sleeper] : m_sleepers)
        if (!sleeper.isPosted)
            next = std::min(next.value_or(sleeper.end), sleeper.end);
    m_alarm->set(next);
}

void SystemClock::post(SleepId id)
{
    if (std::exchange(m_sleepers.at(id).isPosted, true))
        return;
    const auto wake = [this, id] { m_sleepers.extract(id).mapped().wake(); };
    QMetaObject::invokeMethod(this, wake, Qt::QueuedConnection);
}
