// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/UserNotifications/DesktopNotificationCenter.h"
#include "Support/FakePlatform.h"
#include "Support/PlayedService.h"
#include "Support/Table.h"

#include <QDBusArgument>

using namespace Qt::StringLiterals;
using Answer = Permissions::Answer;
using Status = NotificationAuthorizationStatus;

namespace {
const QString service = u"org.freedesktop.Notifications"_s;
const QString serverName = u"server"_s;
const QString programName = u"program"_s;
const QString capabilitiesMethod = u"GetCapabilities"_s;
const QString notifyMethod = u"Notify"_s;

/// A notification server that answers nothing by itself.
class Server : public PlayedService
{
public:
    explicit Server(PrivateBus &bus, const QString &connection = serverName)
        : PlayedService(bus, service, u"/org/freedesktop/Notifications"_s, connection)
    {
    }

    /// Waits for the question what the server can do, and answers it.
    void tellCapabilities(const QStringList &value = {u"body"_s}) { send(next(capabilitiesMethod).createReply(value)); }

    void refuse(const QString &method)
    {
        send(next(method).createErrorReply(QDBusError::LimitsExceeded, u"too many"_s));
    }

    QDBusMessage nextNotification() { return next(notifyMethod); }

    /// Tells the number under which a notification is shown.
    void show(const QDBusMessage &notify, uint id) { send(notify.createReply(id)); }
};

UserNotificationRequest request(const char *identifier, const QString &title,
                                InterruptionLevel level = InterruptionLevel::active)
{
    return {.identifier = QString::fromUtf8(identifier),
            .title = title,
            .body = u"2nd: depth < 12 km & more"_s,
            .interruptionLevel = level};
}

QString title(const QDBusMessage &notify)
{
    return notify.arguments().value(3).toString();
}

uint replaces(const QDBusMessage &notify)
{
    return notify.arguments().value(1).toUInt();
}

/// A centre on a bus of its own, with the user's answer and a server that was there before it.
struct Scene
{
    explicit Scene(Answer answer = Answer::authorized) { setAnswer(answer); }

    void setAnswer(Answer answer) { permissions.answers.insert(Permissions::Subject::notifications, answer); }
    UserNotificationCenter &either(bool isFake)
    {
        return isFake ? static_cast<UserNotificationCenter &>(fake) : center;
    }
    bool asksTheUser() const { return permissions.isPending(Permissions::Subject::notifications); }

    PrivateBus bus;
    FakePermissions permissions;
    std::unique_ptr<Server> server = std::make_unique<Server>(bus);
    FakeUserNotificationCenter fake;
    DesktopNotificationCenter center{permissions, bus.connection(programName), u"orvalia"_s};
};
}

class DesktopNotificationCenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void notificationSpeaksTheProtocol_data()
    {
        const Table<QStringList, bool, QString, QVariantMap> row;
        const QString plain = u"2nd: depth < 12 km & more"_s;
        const QVariantMap hints = {{u"urgency"_s, QVariant::fromValue(uchar(1))}, {u"desktop-entry"_s, u"orvalia"_s}};
        QVariantMap audible = hints;
        audible.insert(u"sound-name"_s, u"message-new-instant"_s);
        QVariantMap critical = hints;
        critical.insert(u"urgency"_s, QVariant::fromValue(uchar(2)));
        row("plain server", {u"body"_s}, false, plain, hints);
        row("markup", {u"body"_s, u"body-markup"_s}, false, "2nd: depth &lt; 12 km &amp; more", hints);
        row("sound", {u"sound"_s}, false, plain, audible);
        row("urgent", {}, true, plain, critical);
    }

    void notificationSpeaksTheProtocol()
    {
        const auto [capabilities, isUrgent, body, hints] = Table<QStringList, bool, QString, QVariantMap>::current();
        Scene scene;
        // A zero character must not cut the text off.
        scene.center.add(request("a", u"<b>SE</b>\0 & \"LLANO\""_s,
                                 isUrgent ? InterruptionLevel::timeSensitive : InterruptionLevel::active));
        scene.server->tellCapabilities(capabilities);
        const QDBusMessage notify = scene.server->nextNotification();
        QCOMPARE(notify.signature(), u"susssasa{sv}i"_s);
        QVariantList arguments = notify.arguments();
        QCOMPARE(qdbus_cast<QVariantMap>(arguments.takeAt(6)), hints);
        QCOMPARE(
            arguments,
            (QVariantList{u"Orvalia"_s, 0u, u"orvalia"_s, u"<b>SE</b>\uFFFD & \"LLANO\""_s, body, QStringList(), -1}));
    }

    void newestWithTheSameIdentifierWaitsForTheNumber()
    {
        Scene scene;
        Server &server = *scene.server;
        scene.center.add(request("a", u"1"_s));
        scene.center.add(request("b", u"another"_s));
        PrivateBus::letArrive(programName, serverName);
        QCOMPARE(server.count(capabilitiesMethod), 1);
        QVERIFY2(server.count(notifyMethod) == 0, "sent before the server told what it can");
        server.tellCapabilities();
        const QDBusMessage first = server.nextNotification();
        QCOMPARE(title(first), u"1"_s);
        QCOMPARE(title(server.nextNotification()), u"another"_s);
        scene.center.add(request("a", u"2"_s));
        scene.center.add(request("a", u"3"_s));
        PrivateBus::letArrive(programName, serverName);
        QCOMPARE(server.count(notifyMethod), 0);
        server.show(first, 7);
        const QDBusMessage third = server.nextNotification();
        QCOMPARE(title(third), u"3"_s);
        QCOMPARE(replaces(third), 7u);
        server.show(third, 7);
        scene.center.add(request("a", u"refused"_s));
        server.refuse(notifyMethod);
        scene.center.add(request("a", u"4"_s));
        const QDBusMessage fourth = server.nextNotification();
        QCOMPARE(title(fourth), u"4"_s);
        QVERIFY2(replaces(fourth) == 7, "a refused replacement leaves the old one standing");
        // A burst of errors loses what was refused and nothing else.
        for (int i = 0; i < 100; ++i)
            scene.center.add(request(QByteArray::number(i).constData(), u"refused"_s));
        for (int i = 0; i < 100; ++i)
            server.refuse(notifyMethod);
        scene.center.add(request("0", u"5"_s));
        const QDBusMessage fifth = server.nextNotification();
        QCOMPARE(title(fifth), u"5"_s);
        QCOMPARE(replaces(fifth), 0u);
        QVERIFY(scene.center.authorizationStatus().result() == Status::authorized);
    }

    void newServerIsAskedAgainAndKnowsNoNumbers()
    {
        Scene scene;
        scene.center.add(request("a", u"1"_s));
        scene.server->tellCapabilities();
        scene.server->show(scene.server->nextNotification(), 7);
        scene.center.add(request("b", u"2"_s));
        QCOMPARE(title(scene.server->nextNotification()), u"2"_s);
        scene.center.add(request("b", u"3"_s)); // waits for an answer that never comes
        scene.server->giveUpName();

        Server server(scene.bus, u"replacement"_s);
        scene.center.add(request("a", u"4"_s)); // nobody has said yet that there is a new one
        QTRY_VERIFY(server.count(capabilitiesMethod) > 0);
        scene.center.add(request("c", u"5"_s)); // what the old one could do says nothing of the new
        server.tellCapabilities({u"body-markup"_s});
        QMap<QString, uint> shown;
        for (int i = 0; i < 3; ++i) {
            const QDBusMessage notify = server.nextNotification();
            QVERIFY(notify.arguments().value(4).toString().contains(u"&lt;"));
            shown.insert(title(notify), replaces(notify));
        }
        QCOMPARE(shown, (QMap<QString, uint>{{u"3"_s, 0}, {u"4"_s, 0}, {u"5"_s, 0}}));
    }

    void whatNoServerTakesIsDropped()
    {
        Scene scene;
        scene.center.add(request("a", u"lost"_s));
        scene.server->refuse(capabilitiesMethod);
        PrivateBus::letArrive(serverName, programName);
        scene.center.add(request("b", u"2"_s));
        scene.server->tellCapabilities();
        QCOMPARE(title(scene.server->nextNotification()), u"2"_s); // not answered for, and lost with the server

        scene.server.reset();
        PrivateBus::goRound(programName);
        scene.center.add(request("c", u"lost"_s));
        // The bus has refused the question by then, and the new server cannot get it.
        PrivateBus::goRound(programName);
        Server server(scene.bus);
        QTRY_VERIFY2(server.count(capabilitiesMethod) > 0, "a new server is asked at once");
        server.tellCapabilities();
        scene.center.add(request("d", u"shown"_s));
        QCOMPARE(title(server.nextNotification()), u"shown"_s);
    }

    /// Of the server no word is needed: it may hang. Without the answer or against it nothing is sent.
    void consentIsTheUsersAnswer_data()
    {
        const Table<bool, bool, int> row;
        row("fake, refused", true, false, int(Status::denied));
        row("fake, granted", true, true, int(Status::authorized));
        row("real, refused", false, false, int(Status::denied));
        row("real, granted", false, true, int(Status::authorized));
    }

    void consentIsTheUsersAnswer()
    {
        const auto [isFake, isGiven, status] = Table<bool, bool, int>::current();
        Scene scene(Answer::notDetermined);
        UserNotificationCenter &center = scene.either(isFake);
        QCOMPARE(int(center.authorizationStatus().result()), int(Status::notDetermined));
        center.add(request("a", u"not asked yet"_s));
        scene.fake.holdsAnswer = true;
        const QFuture<bool> consent = center.requestAuthorization();
        QTRY_VERIFY(isFake || scene.asksTheUser());
        QVERIFY(!consent.isFinished());
        center.add(request("b", u"not answered yet"_s));
        scene.fake.giveAnswer(isGiven);
        scene.permissions.setAnswer(Permissions::Subject::notifications, isGiven ? Answer::authorized : Answer::denied);
        QTRY_VERIFY(consent.isFinished());
        QCOMPARE(consent.result(), isGiven);
        QCOMPARE(int(center.authorizationStatus().result()), status);
        center.add(request("c", u"answered"_s));
        const QFuture<bool> again = center.requestAuthorization();
        scene.fake.giveAnswer(isGiven);
        QTRY_VERIFY(again.isFinished());
        QVERIFY(again.result() == isGiven && !scene.asksTheUser());

        QStringList sent;
        for (const UserNotificationRequest &each : scene.fake.sent)
            sent.append(each.title);
        PrivateBus::letArrive(programName, serverName);
        if (scene.server->count(capabilitiesMethod) > 0) {
            scene.server->tellCapabilities();
            sent.append(title(scene.server->nextNotification()));
        }
        QCOMPARE(sent, isGiven ? QStringList{u"answered"_s} : QStringList());
    }

    void withoutAServerTheQuestionFails_data()
    {
        const Table<bool> row;
        row("fake", true);
        row("real", false);
    }

    void withoutAServerTheQuestionFails()
    {
        const auto [isFake] = Table<bool>::current();
        Scene scene(Answer::notDetermined);
        scene.server.reset();
        const QFuture<bool> consent = scene.either(isFake).requestAuthorization();
        QTRY_VERIFY(consent.isFinished());
        QVERIFY_EXCEPTION_THROWN(consent.result(), std::runtime_error);
        QVERIFY2(!scene.asksTheUser(), "asked in vain");
        QVERIFY(scene.either(isFake).authorizationStatus().result() == Status::notDetermined);
        // Nor does a machine without a bus ask, or take what is sent.
        scene.setAnswer(Answer::authorized);
        DesktopNotificationCenter nowhere(scene.permissions, QDBusConnection(u"no such bus"_s), u"orvalia"_s);
        nowhere.add(request("a", u"lost"_s));
        const QFuture<bool> lost = nowhere.requestAuthorization();
        QTRY_VERIFY(lost.isFinished());
        QVERIFY_EXCEPTION_THROWN(lost.result(), std::runtime_error);
    }

    void userIsAskedWhereAServerCanBeStarted()
    {
        Scene scene(Answer::notDetermined);
        scene.server.reset();
        scene.bus.makeStartable(service, u"/usr/bin/python3 -m dbusmock --template notification_daemon"_s);
        scene.center.requestAuthorization();
        QTRY_VERIFY_WITH_TIMEOUT(scene.asksTheUser(), 30000);
    }
};

QTEST_GUILESS_MAIN(DesktopNotificationCenterTest)
#include "DesktopNotificationCenterTest.moc"
