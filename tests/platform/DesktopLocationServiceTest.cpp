// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Location/DesktopLocationService.h"
#include "Support/FakePlatform.h"
#include "Support/PrivateBus.h"

#include <QDBusConnectionInterface>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <QSignalSpy>
#include <QTest>

using Status = LocationAuthorizationStatus;

namespace {
const QString service = QStringLiteral("org.freedesktop.GeoClue2");
const QString clientPath = QStringLiteral("/org/freedesktop/GeoClue2/Client/1");
const QString hungName = QStringLiteral("hung");
const QString programName = QStringLiteral("program");

/// The stand-in of the position service in a process of its own.
class StandIn
{
public:
    explicit StandIn(PrivateBus &bus, const QStringList &arguments = {})
        : m_observer(bus.connection(QStringLiteral("observer")))
    {
        bus.startPython(m_process, QStringList{QStringLiteral(GEOCLUE_STANDIN)} + arguments);
        QTRY_VERIFY_WITH_TIMEOUT(isRegistered(), 30000);
    }

    /// The name is free when this returns; the bus may hear of the end of the process later than we do.
    ~StandIn()
    {
        m_process.closeWriteChannel();
        m_process.waitForFinished();
        QTRY_VERIFY(!isRegistered());
    }

    void move(const char *position) { m_process.write(position + QByteArray("\n")); }

    /// Whether a line has been printed by now. What was printed before something arrived over the bus is seen here.
    bool hasPrinted(const char *line)
    {
        m_process.waitForReadyRead(0);
        m_printed += m_process.readAllStandardOutput();
        return m_printed.contains(line + QByteArray("\n"));
    }

    QByteArray printed() const { return m_printed; }

private:
    bool isRegistered() const { return m_observer.interface()->isServiceRegistered(service); }

    QDBusConnection m_observer;
    QProcess m_process;
    QByteArray m_printed;
};

/// A service that answers nothing by itself.
class HungService : public QDBusVirtualObject
{
public:
    explicit HungService(PrivateBus &bus)
        : m_bus(bus.connection(hungName))
    {
        m_bus.registerVirtualObject(QStringLiteral("/org/freedesktop/GeoClue2"), this, QDBusConnection::SubPath);
        m_bus.registerService(service);
    }

    ~HungService() override
    {
        m_bus.unregisterService(service);
        PrivateBus::disconnect(hungName);
    }

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        calls.append(message.member());
        m_questions.insert(message.member(), message);
        return true;
    }

    /// The open call of `method`, which has come or is on its way.
    QDBusMessage question(const QString &method)
    {
        (void)QTest::qWaitFor([&] { return m_questions.contains(method); });
        return m_questions.take(method);
    }

    /// Answers after all, and returns when the program has taken that in.
    void send(const QDBusMessage &answer)
    {
        m_bus.send(answer);
        PrivateBus::letArrive(hungName, programName);
    }

    void giveClient()
    {
        send(question(QStringLiteral("GetClient")).createReply(QVariant::fromValue(QDBusObjectPath(clientPath))));
    }

    /// Tells of a new position, which is to be asked for.
    void tellOfMovement()
    {
        QDBusMessage signal = QDBusMessage::createSignal(clientPath, service + QStringLiteral(".Client"),
                                                         QStringLiteral("LocationUpdated"));
        const QVariant somewhere = QVariant::fromValue(QDBusObjectPath(clientPath));
        m_bus.send(signal << somewhere << somewhere);
    }

    QStringList calls;

private:
    QDBusConnection m_bus;
    QHash<QString, QDBusMessage> m_questions;
};

/// The adapter on the test's bus, and what it has told.
struct Scene
{
    explicit Scene(Permissions::Answer answer = Permissions::Answer::authorized)
    {
        permissions.answers.insert(Permissions::Subject::location, answer);
        location.setDistanceFilter(500.0);
        QObject::connect(&location, &LocationService::locationsUpdated, &location,
                         [this](const std::vector<Coordinate> &positions) {
                             for (const Coordinate &each : positions)
                                 told.append(QStringLiteral("%1 %2").arg(each.latitude).arg(each.longitude));
                         });
    }

    FakePermissions permissions;
    DesktopLocationService location{permissions, QDBusConnection(programName), QStringLiteral("orvalia")};
    QStringList told;
};
}

class DesktopLocationServiceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_bus.connection(programName).isConnected()); }

    void positionArrives()
    {
        StandIn standIn(m_bus);
        standIn.move("28.1 -15.4");
        Scene scene;
        scene.location.startUpdatingLocation();
        scene.location.startUpdatingLocation();
        QTRY_COMPARE(scene.told, QStringList{QStringLiteral("28.1 -15.4")});
        scene.location.startUpdatingLocation();
        for (const char *const position : {"91 -15", "nan -15", "28 -181", "29 -15"})
            standIn.move(position);
        QTRY_COMPARE(scene.told, (QStringList{QStringLiteral("28.1 -15.4"), QStringLiteral("29 -15")}));
        QVERIFY(standIn.hasPrinted("DesktopId orvalia"));
        QVERIFY2(standIn.hasPrinted("RequestedAccuracyLevel 6"), "street level: no satellites");
        QVERIFY(standIn.hasPrinted("DistanceThreshold 500"));
        QCOMPARE(standIn.printed().count("Start"), 1);
    }

    void deniedAnswerWithholdsPositions()
    {
        StandIn standIn(m_bus);
        standIn.move("28 -15");
        Scene scene;
        scene.location.startUpdatingLocation();
        QTRY_COMPARE(scene.told.size(), 1);
        scene.permissions.setAnswer(Permissions::Subject::location, Permissions::Answer::denied);
        standIn.move("29 -15");
        QTRY_VERIFY(standIn.hasPrinted("Stop"));
        QVERIFY(!scene.told.contains(QStringLiteral("29 -15")));
        scene.permissions.setAnswer(Permissions::Subject::location, Permissions::Answer::authorized);
        scene.location.startUpdatingLocation();
        standIn.move("30 -15");
        QTRY_VERIFY(scene.told.contains(QStringLiteral("30 -15")));
        QVERIFY(standIn.hasPrinted("Start"));
        QCOMPARE(standIn.printed().count("Start"), 2);
    }

    void answerTakenBackWhileLookingBeginsNothing()
    {
        HungService slow(m_bus);
        Scene scene;
        scene.location.startUpdatingLocation();
        QTRY_COMPARE(slow.calls.size(), 1);
        scene.permissions.setAnswer(Permissions::Subject::location, Permissions::Answer::denied);
        slow.giveClient();
        PrivateBus::letArrive(programName, hungName);
        QCOMPARE(slow.calls.size(), 1);
    }

    void positionOnItsWayWhenTheUserSaysNoIsWithheld()
    {
        HungService slow(m_bus);
        Scene scene;
        scene.location.startUpdatingLocation();
        slow.giveClient();
        slow.tellOfMovement();
        const QDBusMessage question = slow.question(QStringLiteral("GetAll"));
        scene.permissions.setAnswer(Permissions::Subject::location, Permissions::Answer::denied);
        const QVariantMap position = {{QStringLiteral("Latitude"), 28.0}, {QStringLiteral("Longitude"), -15.0}};
        slow.send(question.createReply(position));
        QVERIFY(scene.told.isEmpty());
    }

    void refusedAccessIsDeniedForThisRun()
    {
        StandIn standIn(m_bus, {QStringLiteral("deny")});
        standIn.move("28 -15");
        Scene scene;
        QSignalSpy changed(&scene.location, &LocationService::authorizationChanged);
        QVERIFY(changed.wait());
        scene.location.startUpdatingLocation();
        QTRY_COMPARE(changed.count(), 2);
        QVERIFY(scene.location.authorizationStatus() == Status::denied);
        QVERIFY2(scene.permissions.answer(Permissions::Subject::location) == Permissions::Answer::authorized,
                 "the user's own answer stands");
        scene.permissions.setAnswer(Permissions::Subject::location, Permissions::Answer::authorized);
        QVERIFY(scene.location.authorizationStatus() == Status::denied);
        QVERIFY(scene.told.isEmpty());
    }

    void withoutServiceTheAnswerStandsAndNoPositionComes()
    {
        Scene scene;
        QSignalSpy changed(&scene.location, &LocationService::authorizationChanged);
        scene.location.startUpdatingLocation();
        QVERIFY(changed.wait());
        // A service that comes later is found by the next start: the first has ended, then, without a position.
        StandIn standIn(m_bus);
        standIn.move("28 -15");
        QVERIFY(scene.location.authorizationStatus() == Status::authorizedAlways);
        QVERIFY(scene.told.isEmpty());
        // The first start may not have heard yet that there was nobody.
        const auto isTold = [&scene] {
            scene.location.startUpdatingLocation();
            return scene.told.size() == 1;
        };
        QTRY_VERIFY(isTold());
        QCOMPARE(changed.count(), 1);
    }

    void serviceThatHangsHoldsNobodyUpAndItsDeathEndsTheUpdates()
    {
        Scene scene;
        auto hung = std::make_unique<HungService>(m_bus);
        scene.location.startUpdatingLocation();
        scene.location.startUpdatingLocation();
        PrivateBus::letArrive(programName, hungName);
        QVERIFY2(hung->calls.size() == 1, "asked again while the answer is outstanding");
        hung->giveClient();
        QTRY_VERIFY(hung->calls.contains(QStringLiteral("Start")));
        hung.reset();
        PrivateBus::goRound(programName);
        hung = std::make_unique<HungService>(m_bus);
        scene.location.startUpdatingLocation();
        QTRY_COMPARE(hung->calls, QStringList{QStringLiteral("GetClient")});
        QVERIFY(scene.location.authorizationStatus() == Status::authorizedAlways);
    }

    void withoutBusNoPositionComes()
    {
        FakePermissions permissions;
        DesktopLocationService location(permissions, QDBusConnection(QStringLiteral("no such bus")),
                                        QStringLiteral("orvalia"));
        QSignalSpy changed(&location, &LocationService::authorizationChanged);
        location.startUpdatingLocation();
        QVERIFY(changed.wait());
        QVERIFY(location.authorizationStatus() == Status::notDetermined);
    }

    void otherPermissionsSayNothing()
    {
        Scene scene(Permissions::Answer::notDetermined);
        QSignalSpy changed(&scene.location, &LocationService::authorizationChanged);
        QVERIFY(changed.wait());
        scene.permissions.setAnswer(Permissions::Subject::notifications, Permissions::Answer::denied);
        scene.permissions.setAnswer(Permissions::Subject::location, Permissions::Answer::authorized);
        QVERIFY(changed.wait());
        QCOMPARE(changed.count(), 2);
    }

    /// What the program relies on, of the fake and of the desktop's service alike.
    void contract_data()
    {
        QTest::addColumn<bool>("isFake");
        QTest::addColumn<Permissions::Answer>("answer");
        QTest::addColumn<int>("status");
        for (const bool isFake : {true, false}) {
            const char *const whose = isFake ? "fake" : "desktop";
            QTest::addRow("%s, refused", whose) << isFake << Permissions::Answer::denied << int(Status::denied);
            QTest::addRow("%s, granted", whose)
                << isFake << Permissions::Answer::authorized << int(Status::authorizedAlways);
        }
    }

    void contract()
    {
        QFETCH(bool, isFake);
        QFETCH(Permissions::Answer, answer);
        QFETCH(int, status);
        FakePermissions permissions;
        FakeLocationService fake;
        DesktopLocationService desktop(permissions, QDBusConnection(programName), QStringLiteral("orvalia"));
        LocationService &location = isFake ? static_cast<LocationService &>(fake) : desktop;
        QSignalSpy changed(&location, &LocationService::authorizationChanged);
        QVERIFY(location.authorizationStatus() == Status::notDetermined);
        QCOMPARE(changed.count(), 0);
        QVERIFY2(changed.wait(), "told once after construction");

        location.requestAlwaysAuthorization();
        if (isFake)
            fake.change(Status(status));
        else
            permissions.setAnswer(Permissions::Subject::location, answer);
        QVERIFY2(changed.count() == 1, "told inside a call");
        QVERIFY(changed.wait());
        QCOMPARE(int(location.authorizationStatus()), status);
        location.startUpdatingLocation();
        location.startUpdatingLocation();
        QCOMPARE(changed.count(), 2);
    }

    void asksTheUserThroughThePermissions()
    {
        Scene scene(Permissions::Answer::notDetermined);
        scene.location.requestAlwaysAuthorization();
        QVERIFY(scene.permissions.isPending(Permissions::Subject::location));
    }

private:
    PrivateBus m_bus;
};

QTEST_GUILESS_MAIN(DesktopLocationServiceTest)
#include "DesktopLocationServiceTest.moc"
