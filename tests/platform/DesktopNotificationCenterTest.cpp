// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/UserNotifications/DesktopNotificationCenter.h"
#include "Support/FakePlatform.h"
#include "Support/PrivateBus.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {
const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString programName = QStringLiteral("program");
const QString serverName = QStringLiteral("server");
const QString capabilitiesMethod = QStringLiteral("GetCapabilities");
const QString notifyMethod = QStringLiteral("Notify");

/// A notification server on a connection of its own. It keeps every call open until a test answers it.
class HeldServer : public QDBusVirtualObject
{
public:
    explicit HeldServer(PrivateBus &bus, const QString &connection = serverName)
        : m_connection(connection)
        , m_bus(bus.connection(connection))
    {
        m_bus.registerVirtualObject(QStringLiteral("/org/freedesktop/Notifications"), this);
        m_bus.registerService(service);
    }

    /// The name is free when this returns; the end of a connection alone is heard of later.
    ~HeldServer() override
    {
        giveUpName();
        PrivateBus::disconnect(m_connection);
    }

    /// As when another server takes over; this one lives on.
    void giveUpName() { m_bus.unregisterService(service); }

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        calls.append(message);
        answerCapabilities();
        return true;
    }

    int count(const QString &method) const
    {
        return int(std::ranges::count_if(calls, [&](const QDBusMessage &call) { return call.member() == method; }));
    }

    /// Answers open and later questions about what the server can do.
    void tellCapabilities(const QStringList &value = {QStringLiteral("body")})
    {
        m_capabilities = value;
        answerCapabilities();
    }

    void refuse(const QString &method)
    {
        QTRY_VERIFY(count(method) > 0);
        m_bus.send(take(method).createErrorReply(QDBusError::LimitsExceeded, QStringLiteral("too many")));
    }

    /// Waits for the next notification and takes it out of the open calls.
    QDBusMessage next()
    {
        const bool hasCome = QTest::qWaitFor([this] { return count(notifyMethod) > 0; });
        return hasCome ? take(notifyMethod) : QDBusMessage();
    }

    /// Tells the number under which a notification is shown.
    void show(const QDBusMessage &notify, uint id)
    {
        QCOMPARE(notify.type(), QDBusMessage::MethodCallMessage);
        m_bus.send(notify.createReply(id));
    }

    QList<QDBusMessage> calls;

private:
    QDBusMessage take(const QString &method)
    {
        const auto call =
            std::ranges::find_if(calls, [&](const QDBusMessage &each) { return each.member() == method; });
        const QDBusMessage taken = *call;
        calls.erase(call);
        return taken;
    }

    void answerCapabilities()
    {
        while (m_capabilities && count(capabilitiesMethod) > 0)
            m_bus.send(take(capabilitiesMethod).createReply(*m_capabilities));
    }

    QString m_connection;
    QDBusConnection m_bus;
    std::optional<QStringList> m_capabilities;
};

UserNotificationRequest request(const char *identifier, const char *title,
                                InterruptionLevel level = InterruptionLevel::active)
{
    return {.identifier = QString::fromUtf8(identifier),
            .title = QString::fromUtf8(title),
            .body = QStringLiteral("2nd: depth < 12 km & more"),
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

/// A centre on a bus of its own, with the user's consent and a server that was there before it.
struct Scene
{
    Scene() { permissions.answers.insert(Permissions::Subject::notifications, Permissions::Answer::authorized); }

    PrivateBus bus;
    FakePermissions permissions;
    std::unique_ptr<HeldServer> server = std::make_unique<HeldServer>(bus);
    DesktopNotificationCenter center{permissions, bus.connection(programName), QStringLiteral("orvalia")};
};
}

class DesktopNotificationCenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void notificationSpeaksTheProtocol_data()
    {
        QTest::addColumn<QStringList>("capabilities");
        QTest::addColumn<bool>("urgent");
        QTest::addColumn<QString>("body");
        QTest::addColumn<QVariantMap>("hints");
        const QString plain = QStringLiteral("2nd: depth < 12 km & more");
        const QString escaped = QStringLiteral("2nd: depth &lt; 12 km &amp; more");
        const QVariantMap hints = {{QStringLiteral("urgency"), QVariant::fromValue(uchar(1))},
                                   {QStringLiteral("desktop-entry"), QStringLiteral("orvalia")}};
        QVariantMap audible = hints;
        audible.insert(QStringLiteral("sound-name"), QStringLiteral("message-new-instant"));
        QVariantMap critical = hints;
        critical.insert(QStringLiteral("urgency"), QVariant::fromValue(uchar(2)));
        QTest::newRow("plain server") << QStringList{QStringLiteral("body")} << false << plain << hints;
        QTest::newRow("markup") << QStringList{QStringLiteral("body"), QStringLiteral("body-markup")} << false
                                << escaped << hints;
        QTest::newRow("sound") << QStringList{QStringLiteral("sound")} << false << plain << audible;
        QTest::newRow("urgent") << QStringList{} << true << plain << critical;
    }

    void notificationSpeaksTheProtocol()
    {
        QFETCH(QStringList, capabilities);
        QFETCH(bool, urgent);
        Scene scene;
        HeldServer &server = *scene.server;
        scene.center.add(request("a", "<b>SE</b> & \"LLANO\"",
                                 urgent ? InterruptionLevel::timeSensitive : InterruptionLevel::active));
        server.tellCapabilities(capabilities);
        const QDBusMessage notify = server.next();
        QCOMPARE(notify.signature(), QStringLiteral("susssasa{sv}i"));
        const QVariantList arguments = notify.arguments();
        QCOMPARE(arguments.at(0).toString(), QStringLiteral("Orvalia"));
        QCOMPARE(replaces(notify), 0u);
        QCOMPARE(arguments.at(2).toString(), QStringLiteral("orvalia"));
        QCOMPARE(title(notify), QStringLiteral("<b>SE</b> & \"LLANO\""));
        QTEST(arguments.at(4).toString(), "body");
        QCOMPARE(arguments.at(5).toStringList(), QStringList());
        QTEST(qdbus_cast<QVariantMap>(arguments.at(6)), "hints");
        QCOMPARE(arguments.at(7).toInt(), -1);
    }

    void nothingIsSentBeforeTheServerTellsWhatItCan()
    {
        Scene scene;
        HeldServer &server = *scene.server;
        scene.center.add(request("a", "1"));
        scene.center.add(request("b", "2"));
        QTRY_COMPARE(server.count(capabilitiesMethod), 1);
        QCOMPARE(server.count(notifyMethod), 0);
        server.tellCapabilities();
        QCOMPARE(title(server.next()), QStringLiteral("1"));
        QCOMPARE(title(server.next()), QStringLiteral("2"));
        QCOMPARE(server.calls.size(), 0);
    }

    void newestWithTheSameIdentifierWaitsForTheNumber()
    {
        Scene scene;
        HeldServer &server = *scene.server;
        scene.center.add(request("a", "1"));
        server.tellCapabilities();
        const QDBusMessage first = server.next();
        scene.center.add(request("a", "2"));
        scene.center.add(request("a", "3"));
        scene.center.add(request("b", "another"));
        const QDBusMessage another = server.next();
        QCOMPARE(title(another), QStringLiteral("another"));
        QCOMPARE(replaces(another), 0u);

        server.show(first, 7);
        const QDBusMessage third = server.next();
        QCOMPARE(title(third), QStringLiteral("3"));
        QCOMPARE(replaces(third), 7u);
        server.show(third, 7);
        scene.center.add(request("a", "refused"));
        server.refuse(notifyMethod);
        scene.center.add(request("a", "4"));
        const QDBusMessage fourth = server.next();
        QCOMPARE(title(fourth), QStringLiteral("4"));
        QVERIFY2(replaces(fourth) == 7, "a refused replacement leaves the old one standing");
    }

    void newServerIsAskedAgainAndKnowsNoNumbers()
    {
        Scene scene;
        scene.center.add(request("a", "1"));
        scene.server->tellCapabilities();
        scene.server->show(scene.server->next(), 7);
        scene.center.add(request("b", "2"));
        QCOMPARE(title(scene.server->next()), QStringLiteral("2"));
        scene.center.add(request("b", "3")); // waits for an answer that never comes
        scene.server->giveUpName();

        HeldServer server(scene.bus, QStringLiteral("replacement"));
        scene.center.add(request("a", "4")); // nobody has said yet that there is a new one
        QTRY_VERIFY(server.count(capabilitiesMethod) > 0);
        scene.center.add(request("c", "5")); // what the old one could do says nothing of the new
        server.tellCapabilities({QStringLiteral("body-markup")});
        QMap<QString, uint> shown;
        for (int i = 0; i < 3; ++i) {
            const QDBusMessage notify = server.next();
            QVERIFY(notify.arguments().value(4).toString().contains(u"&lt;"));
            shown.insert(title(notify), replaces(notify));
        }
        QCOMPARE(shown,
                 (QMap<QString, uint>{{QStringLiteral("3"), 0}, {QStringLiteral("4"), 0}, {QStringLiteral("5"), 0}}));
    }

    void wordOfAReplacedServerCountsNoMore()
    {
        Scene scene;
        HeldServer &old = *scene.server;
        scene.center.add(request("a", "1"));
        QTRY_COMPARE(old.count(capabilitiesMethod), 1);
        old.giveUpName();
        HeldServer server(scene.bus, QStringLiteral("replacement"));
        QTRY_VERIFY2(server.count(capabilitiesMethod) > 0, "the new one is asked while the old one owes its answer");
        old.tellCapabilities({QStringLiteral("body-markup")});
        scene.bus.letArrive(serverName, programName);
        server.tellCapabilities();
        QDBusMessage notify = server.next();
        QCOMPARE(title(notify), QStringLiteral("1"));
        QVERIFY(notify.arguments().value(4).toString().contains(u'<'));

        server.giveUpName();
        PrivateBus::goRound(programName); // there is none for a while
        HeldServer last(scene.bus, QStringLiteral("last"));
        last.tellCapabilities();
        QCOMPARE(title(last.next()), QStringLiteral("1"));
        server.show(notify, 7);
        scene.bus.letArrive(QStringLiteral("replacement"), programName);
        scene.center.add(request("a", "2"));
        scene.center.add(request("b", "3"));
        QVERIFY2(title(last.next()) == u"3", "one still waits for the answer of the last server");
    }

    void burstOfErrorsLosesOnlyThoseNotifications()
    {
        Scene scene;
        HeldServer &server = *scene.server;
        for (int i = 0; i < 200; ++i)
            scene.center.add(request(QByteArray::number(i % 150).constData(), "lost"));
        server.tellCapabilities();
        QTRY_COMPARE(server.count(notifyMethod), 150);
        for (int i = 0; i < 200 && !QTest::currentTestFailed(); ++i)
            server.refuse(notifyMethod);
        scene.center.add(request("0", "shown"));
        const QDBusMessage notify = server.next();
        QCOMPARE(title(notify), QStringLiteral("shown"));
        QCOMPARE(replaces(notify), 0u);
        QVERIFY(scene.permissions.answer(Permissions::Subject::notifications) == Permissions::Answer::authorized);
    }

    void hungServerHoldsNobodyUp()
    {
        Scene scene;
        HeldServer &server = *scene.server;
        scene.center.add(request("a", "1"));
        QTRY_COMPARE(server.count(capabilitiesMethod), 1);
        const QFuture<bool> answer = scene.center.requestAuthorization();
        QTRY_VERIFY(answer.isFinished());
        QVERIFY2(answer.result(), "the user's consent needs no word from the server");
    }

    void serverThatCannotTellIsAskedAtTheNextNotification()
    {
        Scene scene;
        HeldServer &server = *scene.server;
        scene.center.add(request("a", "lost"));
        server.refuse(capabilitiesMethod);
        // Until the refusal has arrived, what is added is lost with the first.
        const auto isAskedAgain = [&] {
            scene.center.add(request("b", "2"));
            return server.count(capabilitiesMethod) > 0;
        };
        QTRY_VERIFY(isAskedAgain());
        server.tellCapabilities();
        QCOMPARE(title(server.next()), QStringLiteral("2"));
    }

    void withoutServerNotificationsAreDropped()
    {
        Scene scene;
        scene.server.reset();
        scene.permissions.answers.clear();
        const QFuture<bool> answer = scene.center.requestAuthorization();
        QTRY_VERIFY(answer.isFinished());
        QVERIFY_EXCEPTION_THROWN(answer.result(), std::runtime_error);
        QVERIFY2(!scene.permissions.isPending(Permissions::Subject::notifications), "asked in vain");

        scene.permissions.answers.insert(Permissions::Subject::notifications, Permissions::Answer::authorized);
        PrivateBus::goRound(programName);
        scene.center.add(request("a", "lost"));
        // The bus has refused the question by then, and the new server cannot get it.
        PrivateBus::goRound(programName);
        HeldServer server(scene.bus);
        QTRY_VERIFY2(server.count(capabilitiesMethod) > 0, "a new server is asked at once");
        server.tellCapabilities();
        scene.center.add(request("b", "shown"));
        QCOMPARE(title(server.next()), QStringLiteral("shown"));
    }

    void serverThatOnlyCouldBeStartedIs()
    {
        Scene scene;
        scene.server.reset();
        scene.permissions.answers.clear();
        scene.bus.makeStartable(service, QStringLiteral("/usr/bin/python3 -m dbusmock --template notification_daemon"));
        const QFuture<bool> consent = scene.center.requestAuthorization();
        QTRY_VERIFY_WITH_TIMEOUT(scene.permissions.isPending(Permissions::Subject::notifications), 30000);
        QVERIFY(!consent.isFinished());
    }

    void withoutBusNothingHappens()
    {
        FakePermissions permissions;
        permissions.answers.insert(Permissions::Subject::notifications, Permissions::Answer::authorized);
        DesktopNotificationCenter center(permissions, QDBusConnection(QStringLiteral("no such bus")),
                                         QStringLiteral("orvalia"));
        center.add(request("a", "lost"));
        const QFuture<bool> answer = center.requestAuthorization();
        QTRY_VERIFY(answer.isFinished());
        QVERIFY_EXCEPTION_THROWN(answer.result(), std::runtime_error);
    }

    void withoutConsentNothingIsSent_data()
    {
        QTest::addColumn<Permissions::Answer>("answer");
        QTest::newRow("not asked yet") << Permissions::Answer::notDetermined;
        QTest::newRow("refused") << Permissions::Answer::denied;
    }

    void withoutConsentNothingIsSent()
    {
        QFETCH(Permissions::Answer, answer);
        Scene scene;
        HeldServer &server = *scene.server;
        scene.permissions.answers.insert(Permissions::Subject::notifications, answer);
        scene.center.add(request("a", "secret"));
        scene.permissions.answers.insert(Permissions::Subject::notifications, Permissions::Answer::authorized);
        scene.center.add(request("b", "shown"));
        server.tellCapabilities();
        QCOMPARE(title(server.next()), QStringLiteral("shown"));
    }

    void zeroCharacterCutsNothingOff()
    {
        Scene scene;
        HeldServer &server = *scene.server;
        UserNotificationRequest odd = request("a", "");
        odd.title = QStringLiteral("SE") + QChar(0) + QStringLiteral("LLANO");
        scene.center.add(odd);
        server.tellCapabilities();
        QCOMPARE(title(server.next()), QStringLiteral("SE\uFFFDLLANO"));
    }

    /// What the program relies on, of the fake and of the desktop's server alike. Without an answer there is no
    /// service.
    void contract_data()
    {
        QTest::addColumn<bool>("isFake");
        QTest::addColumn<Permissions::Answer>("answer");
        QTest::addColumn<QString>("outcome");
        for (const bool isFake : {true, false}) {
            const char *const whose = isFake ? "fake" : "desktop";
            QTest::addRow("%s, no service", whose)
                << isFake << Permissions::Answer::notDetermined << QStringLiteral("failed, not determined");
            QTest::addRow("%s, refused", whose)
                << isFake << Permissions::Answer::denied << QStringLiteral("no, denied");
            QTest::addRow("%s, granted", whose)
                << isFake << Permissions::Answer::authorized << QStringLiteral("yes, authorized");
        }
    }

    void contract()
    {
        QFETCH(bool, isFake);
        QFETCH(Permissions::Answer, answer);
        Scene scene;
        FakeUserNotificationCenter fake;
        scene.permissions.answers.insert(Permissions::Subject::notifications, answer);
        if (answer == Permissions::Answer::notDetermined)
            scene.server.reset();
        else
            fake.answer = answer == Permissions::Answer::authorized;
        UserNotificationCenter &center = isFake ? static_cast<UserNotificationCenter &>(fake) : scene.center;
        const QFuture<bool> consent = center.requestAuthorization();
        QTRY_VERIFY(consent.isFinished());
        QTEST(said(consent) + QStringLiteral(", ") + said(center.authorizationStatus().result()), "outcome");
    }

    void questionStaysOpenUntilTheUserAnswers()
    {
        Scene scene;
        scene.permissions.answers.clear();
        const QFuture<bool> consent = scene.center.requestAuthorization();
        QTRY_VERIFY(scene.permissions.isPending(Permissions::Subject::notifications));
        QVERIFY(!consent.isFinished());
        scene.permissions.setAnswer(Permissions::Subject::notifications, Permissions::Answer::authorized);
        QVERIFY(consent.result());
    }

    void mockDaemonUnderstands()
    {
        Scene scene;
        scene.server.reset();
        QTemporaryDir folder;
        const QString log = folder.filePath(QStringLiteral("log"));
        QProcess daemon;
        scene.bus.startPython(daemon,
                              {QStringLiteral("-m"), QStringLiteral("dbusmock"), QStringLiteral("--template"),
                               QStringLiteral("notification_daemon"), QStringLiteral("-p"),
                               QStringLiteral("{\"capabilities\":\"body body-markup sound\"}"), QStringLiteral("-l"),
                               log});
        QDBusConnection observer = scene.bus.connection(QStringLiteral("observer"));
        QTRY_VERIFY_WITH_TIMEOUT(observer.interface()->isServiceRegistered(service), 30000);
        PrivateBus::goRound(programName);
        scene.center.add(request("a", "M 3.4 <El Hierro> & sea", InterruptionLevel::timeSensitive));
        scene.center.add(request("a", "again"));
        QByteArrayList notified;
        const auto bothAreLogged = [&] {
            QFile file(log);
            notified = file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QByteArrayList();
            notified.removeIf([](const QByteArray &line) { return !line.contains(" Notify "); });
            return notified.size() == 2;
        };
        QTRY_VERIFY_WITH_TIMEOUT(bothAreLogged(), 30000);
        daemon.kill();
        daemon.waitForFinished();
        QVERIFY2(notified.at(0).contains("\"Orvalia\" 0 \"orvalia\" \"M 3.4 <El Hierro> & sea\" "
                                         "\"2nd: depth &lt; 12 km &amp; more\" []"),
                 notified.at(0).constData());
        QVERIFY2(notified.at(0).contains("\"urgency\": 2"), notified.at(0).constData());
        QVERIFY2(notified.at(1).contains("\"Orvalia\" 1 \"orvalia\" \"again\""), notified.at(1).constData());
    }

private:
    static QString said(const QFuture<bool> &consent)
    {
        try {
            return consent.result() ? QStringLiteral("yes") : QStringLiteral("no");
        } catch (const std::exception &) {
            return QStringLiteral("failed");
        }
    }

    static QString said(NotificationAuthorizationStatus status)
    {
        switch (status) {
        case NotificationAuthorizationStatus::notDetermined:
            return QStringLiteral("not determined");
        case NotificationAuthorizationStatus::denied:
            return QStringLiteral("denied");
        case NotificationAuthorizationStatus::authorized:
            return QStringLiteral("authorized");
        case NotificationAuthorizationStatus::provisional:
        case NotificationAuthorizationStatus::ephemeral:
            break;
        }
        return QStringLiteral("of another system");
    }
};

QTEST_GUILESS_MAIN(DesktopNotificationCenterTest)
#include "DesktopNotificationCenterTest.moc"
