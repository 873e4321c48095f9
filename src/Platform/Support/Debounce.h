// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Clock/Clock.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <chrono>
#include <functional>
#include <optional>
#include <utility>

/// Lets a text through once it has stood unchanged for a while, and drops one that equals the last that came through.
class Debounce : public QObject
{
public:
    /// `deliver` is called from the event loop.
    Debounce(Clock &clock, std::chrono::milliseconds quiet, std::function<void(const QString &)> deliver,
             QObject *parent = nullptr)
        : QObject(parent)
        , m_clock(clock)
        , m_quiet(quiet)
        , m_deliver(std::move(deliver))
    {
    }

    /// Takes a new value and starts the wait anew.
    void push(const QString &value)
    {
        m_value = value;
        const quint64 serial = ++m_serial;
        m_clock.sleep(m_quiet, [self = QPointer<Debounce>(this), serial] {
            if (self && serial == self->m_serial)
                self->settle();
        });
    }

private:
    void settle()
    {
        if (m_delivered == m_value)
            return;
        m_delivered = m_value;
        m_deliver(m_value);
    }

    Clock &m_clock;
    std::chrono::milliseconds m_quiet;
    std::function<void(const QString &)> m_deliver;
    QString m_value;
    std::optional<QString> m_delivered;
    quint64 m_serial = 0;
};
