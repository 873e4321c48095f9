// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Clock/Clock.h"

#include <algorithm>
#include <map>
#include <utility>

/// A clock that stands still until a test moves it: sleeps wake inside advance(), in order.
class FakeClock : public Clock
{
public:
    Instant now() const override { return m_wallOffset + m_now; }

    SleepId sleep(std::chrono::milliseconds length, std::function<void()> wake) override
    {
        const SleepId id = ++m_serial;
        m_sleeps.emplace(Key{m_now + std::max(length, std::chrono::milliseconds::zero()), id},
                         Sleeper{id, std::move(wake)});
        return id;
    }

    void hurry(SleepId id) override
    {
        for (auto it = m_sleeps.begin(); it != m_sleeps.end(); ++it) {
            if (it->second.id != id)
                continue;
            // What is due keeps its place; anything else goes behind that, as a posted event would.
            if (it->first.first <= m_now)
                return;
            auto node = m_sleeps.extract(it);
            node.key() = Key{m_now, ++m_serial};
            m_sleeps.insert(std::move(node));
            return;
        }
    }

    /// Lets time pass, waking every sleep that ends in it.
    void advance(std::chrono::milliseconds by)
    {
        const auto until = m_now + by;
        while (!m_sleeps.empty() && m_sleeps.begin()->first.first <= until) {
            auto node = m_sleeps.extract(m_sleeps.begin());
            m_now = std::max(m_now, node.key().first);
            node.mapped().wake();
        }
        m_now = until;
    }

    /// Suspends the machine: time passes, but what comes due in it wakes only at its end.
    void suspend(std::chrono::milliseconds length)
    {
        m_now += length;
        settle();
    }

    /// Runs what an idle event loop would run now.
    void settle() { advance(std::chrono::milliseconds::zero()); }

    /// Sets the wall clock without letting time pass, as a user does.
    void setNow(Instant now) { m_wallOffset = now - m_now; }

    /// How many sleeps are under way.
    qsizetype sleeping() const { return qsizetype(m_sleeps.size()); }

private:
    using Key = std::pair<std::chrono::milliseconds, SleepId>;
    struct Sleeper
    {
        SleepId id;
        std::function<void()> wake;
    };

    std::chrono::milliseconds m_now{0};
    /// 2025-01-01T00:00:00Z until a test says otherwise.
    Instant m_wallOffset{std::chrono::sys_days{std::chrono::year{2025} / 1 / 1}};
    SleepId m_serial = 0;
    std::map<Key, Sleeper> m_sleeps;
};
