// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Support/PrivateBus.h"

#include <QDBusVirtualObject>
#include <QTest>

#include <algorithm>

/// A service that a test plays on a private bus, over a connection of its own. What is not in `answers` stays
/// unanswered until the test replies.
class PlayedService : public QDBusVirtualObject
{
public:
    PlayedService(PrivateBus &bus, const QString &service, const QString &path,
                  const QString &connection = QStringLiteral("service"))
        : m_service(service)
        , m_connection(connection)
        , m_bus(bus.connection(connection))
    {
        m_bus.registerVirtualObject(path, this, QDBusConnection::SubPath);
        m_bus.registerService(service);
    }

    /// The name is free when this returns; the end of a connection alone is heard of later.
    ~PlayedService() override
    {
        giveUpName();
        PrivateBus::disconnect(m_connection);
    }

    /// As when another program takes over; this one lives on.
    void giveUpName() { m_bus.unregisterService(m_service); }

    /// How many calls of `method` have come that were not taken.
    int count(const QString &method) const { return int(std::ranges::count(m_calls, method, &QDBusMessage::member)); }

    /// Waits for the next call of `method` and takes it.
    QDBusMessage next(const QString &method)
    {
        if (!QTest::qWaitFor([&] { return count(method) > 0; }))
            QTest::qFail(qPrintable(method + QStringLiteral(" was not called")), __FILE__, __LINE__);
        const auto call = std::ranges::find(m_calls, method, &QDBusMessage::member);
        return call == m_calls.end() ? QDBusMessage() : m_calls.takeAt(call - m_calls.begin());
    }

    void send(const QDBusMessage &message) { m_bus.send(message); }

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        m_calls.append(message);
        if (answers.contains(message.member()))
            send(message.createReply(answers.value(message.member())));
        return true;
    }

    /// What is replied at once, by method.
    QHash<QString, QVariantList> answers;

private:
    QString m_service;
    QString m_connection;
    QDBusConnection m_bus;
    QList<QDBusMessage> m_calls;
};
