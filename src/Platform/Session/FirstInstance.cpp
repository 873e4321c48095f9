// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Session/FirstInstance.h"

#include <QDBusMessage>

namespace {
constexpr int longestWaitMs = 5000;

/// A launcher passes the leave to come to the front in this variable; on the bus it travels under this key.
constexpr char tokenVariable[] = "XDG_ACTIVATION_TOKEN";
const QString tokenKey = QStringLiteral("activation-token");

QString objectPath(const QString &id)
{
    return QLatin1Char('/') + QString(id).replace(u'.', u'/');
}
}

FirstInstance::FirstInstance(QDBusConnection bus, const QString &id)
    : m_bus(std::move(bus))
    , m_id(id)
{
    // The object comes before the name: whoever sees the name finds it.
    m_bus.registerObject(objectPath(m_id), this, QDBusConnection::ExportScriptableSlots);
    m_holdsName = m_bus.registerService(m_id);
}

FirstInstance::~FirstInstance()
{
    if (m_holdsName)
        m_bus.unregisterService(m_id);
    m_bus.unregisterObject(objectPath(m_id));
}

bool FirstInstance::handsOver() const
{
    if (m_holdsName || !m_bus.isConnected())
        return false;
    QVariantMap platformData;
    if (qEnvironmentVariableIsSet(tokenVariable))
        platformData.insert(tokenKey, qEnvironmentVariable(tokenVariable));
    QDBusMessage call = QDBusMessage::createMethodCall(
        m_id, objectPath(m_id), QStringLiteral("org.freedesktop.Application"), QStringLiteral("Activate"));
    call.setAutoStartService(false);
    call << platformData;
    return m_bus.call(call, QDBus::Block, longestWaitMs).type() == QDBusMessage::ReplyMessage;
}

void FirstInstance::Activate(const QVariantMap &platformData)
{
    // The window system looks for it there when a window wants to the front.
    if (platformData.contains(tokenKey))
        qputenv(tokenVariable, platformData.value(tokenKey).toString().toUtf8());
    Q_EMIT startedAgain();
}
