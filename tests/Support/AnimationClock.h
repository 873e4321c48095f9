// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QAnimationDriver>

#include <chrono>

/// The time of all animations, which stands still until the test lets it pass. Make it before the first window.
class AnimationClock : public QAnimationDriver
{
    Q_OBJECT

public:
    AnimationClock() { install(); }

    /// By milliseconds: of what has only just begun the first step may not count.
    void pass(std::chrono::milliseconds time)
    {
        for (; time.count() > 0; --time) {
            ++m_elapsed;
            advanceAnimation();
        }
    }

    qint64 elapsed() const override { return m_elapsed; }

protected:
    void start() override
    {
        m_elapsed = 0;
        QAnimationDriver::start();
    }

private:
    qint64 m_elapsed = 0;
};
