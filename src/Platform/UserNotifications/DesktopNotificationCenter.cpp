// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/UserNotifications/DesktopNotificationCenter.h"

#include "Platform/Permissions/Permissions.h"
#include "Platform/Support/Async.h"
#include "Platform/Support/DBusCall.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

#include <stdexcept>
#include <utility>

namespace {
const QString notificationService = QStringLiteral("org.freedesktop.Notifications");
const QString programName = QStringLiteral("Orvalia");
/// From the sound naming convention of the desktops: the ordinary sound of an arriving message.
const QString defaultSound = QStringLiteral("message-new-instant");

/// Values of the protocol.
constexpr uchar urgencyNormal = 1;
constexpr uchar urgencyCritical = 2;
constexpr int expiresAsTheServerLikes = -1;

/// The bus carries no zero character: it would cut the text off.
QString carried(QString text)
{
    return text.replace(QChar::Null, QChar::ReplacementCharacter);
}

QDBusMessage toBus(const QString &method, const QVariantList &arguments)
{
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    QDBusMessage message = QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus, method);
    message.setArguments(arguments);
    return message;
}

QDBusMessage toServer(const QString &server, const QString &method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(server, QStringLiteral("/org/freedesktop/Notifications"),
                                                          notificationService, method);
    message.setArguments(arguments);
    return message;
}
}

DesktopNotificationCenter::DesktopNotificationCenter(Permissions &permissions, const QDBusConnection &bus,
                                                     const QString &desktopEntry, QObject *parent)
    : QObject(parent)
    , m_permissions(permissions)
    , m_bus(bus)
    , m_desktopEntry(desktopEntry)
{
    auto *watcher = new QDBusServiceWatcher(notificationService, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &newOwner) { serverChanged(newOwner); });
}

QFuture<bool> DesktopNotificationCenter::requestAuthorization()
{
    auto promise = std::make_shared<QPromise<bool>>();
    promise->start();
    // Both questions go to the bus and not to the server, which may hang. One that only could be started is, and a bus
    // that knows none says so as an error.
    callAsync(m_bus, toBus(QStringLiteral("NameHasOwner"), {notificationService}), this,
              [this, promise](const auto &answer) {
                  const QDBusPendingReply<bool> isThere = answer;
                  if (isThere.isValid() && isThere.value()) {
                      answerWithConsent(promise);
                      return;
                  }
                  callAsync(m_bus, toBus(QStringLiteral("StartServiceByName"), {notificationService, uint(0)}), this,
                            [this, promise](const auto &started) {
                                if (!started.isError()) {
                                    answerWithConsent(promise);
                                    return;
                                }
                                const std::runtime_error error(started.error().message().toStdString());
                                promise->setException(std::make_exception_ptr(error));
                                promise->finish();
                            });
              });
    return promise->future();
}

void DesktopNotificationCenter::answerWithConsent(const std::shared_ptr<QPromise<bool>> &promise)
{
    whenFinished(m_permissions.request(Permissions::Subject::notifications), this,
                 [promise](const QFuture<Permissions::Answer> &answer) {
                     try {
                         promise->addResult(answer.result() == Permissions::Answer::authorized);
                     } catch (...) {
                         promise->setException(std::current_exception());
                     }
                     promise->finish();
                 });
}

QFuture<NotificationAuthorizationStatus> DesktopNotificationCenter::authorizationStatus()
{
    switch (m_permissions.answer(Permissions::Subject::notifications)) {
    case Permissions::Answer::notDetermined:
        return QtFuture::makeReadyFuture(NotificationAuthorizationStatus::notDetermined);
    case Permissions::Answer::denied:
        return QtFuture::makeReadyFuture(NotificationAuthorizationStatus::denied);
    case Permissions::Answer::authorized:
        return QtFuture::makeReadyFuture(NotificationAuthorizationStatus::authorized);
    }
    Q_UNREACHABLE();
}

void DesktopNotificationCenter::add(const UserNotificationRequest &request)
{
    if (m_permissions.answer(Permissions::Subject::notifications) != Permissions::Answer::authorized)
        return;
    if (m_capabilities) {
        deliver(request);
        return;
    }
    m_held.push_back(request);
    askCapabilities();
}

void DesktopNotificationCenter::serverChanged(const QString &newOwner)
{
    ++m_generation;
    m_capabilities.reset();
    m_isAsking = false;
    // The numbers that the old server gave may mean anybody's notifications to the new one. What it never answered for
    // is told anew, at once or when there is a server again.
    for (const Delivery &delivery : std::exchange(m_deliveries, {}))
        if (const auto &unanswered = delivery.waiting ? delivery.waiting : delivery.outstanding)
            m_held.push_back(*unanswered);
    if (!newOwner.isEmpty())
        askCapabilities();
}

void DesktopNotificationCenter::askCapabilities()
{
    if (m_isAsking)
        return;
    m_isAsking = true;
    callAsync(m_bus, toServer(notificationService, QStringLiteral("GetCapabilities"), {}), this,
              [this, generation = m_generation](const auto &answer) {
                  if (generation == m_generation)
                      takeCapabilities(answer);
              });
}

void DesktopNotificationCenter::takeCapabilities(const QDBusPendingCallWatcher &answer)
{
    m_isAsking = false;
    const QDBusPendingReply<QStringList> reply = answer;
    const auto held = std::exchange(m_held, {});
    if (reply.isError())
        return; // no server: what was held is dropped, and the next notification asks again
    m_server = reply.reply().service();
    m_capabilities = reply.value();
    for (const UserNotificationRequest &request : held)
        deliver(request);
}

void DesktopNotificationCenter::deliver(const UserNotificationRequest &request)
{
    Delivery &delivery = m_deliveries[request.identifier];
    if (delivery.outstanding) {
        delivery.waiting = request;
        return;
    }
    delivery.outstanding = request;
    // The summary is plain text on every server, the body only on those without markup.
    const bool hasMarkup = m_capabilities->contains(QStringLiteral("body-markup"));
    const QString body = hasMarkup ? request.body.toHtmlEscaped() : request.body;
    const QVariantList arguments = {programName,
                                    delivery.id,
                                    m_desktopEntry,
                                    carried(request.title),
                                    carried(body),
                                    QStringList{},
                                    hints(request.interruptionLevel),
                                    expiresAsTheServerLikes};
    callAsync(m_bus, toServer(m_server, QStringLiteral("Notify"), arguments), this,
              [this, identifier = request.identifier, generation = m_generation](const auto &answer) {
                  if (generation == m_generation)
                      takeAnswer(identifier, answer);
              });
}

void DesktopNotificationCenter::takeAnswer(const QString &identifier, const QDBusPendingCallWatcher &answer)
{
    Delivery &delivery = m_deliveries[identifier];
    delivery.outstanding.reset();
    const QDBusPendingReply<uint> reply = answer;
    if (!reply.isError())
        delivery.id = reply.value();
    if (const auto next = std::exchange(delivery.waiting, std::nullopt))
        deliver(*next);
}

QVariantMap DesktopNotificationCenter::hints(InterruptionLevel level) const
{
    const uchar urgency = level == InterruptionLevel::timeSensitive ? urgencyCritical : urgencyNormal;
    QVariantMap hints = {{QStringLiteral("urgency"), QVariant::fromValue(urgency)},
                         {QStringLiteral("desktop-entry"), m_desktopEntry}};
    if (m_capabilities->contains(QStringLiteral("sound")))
        hints.insert(QStringLiteral("sound-name"), defaultSound);
    return hints;
}
