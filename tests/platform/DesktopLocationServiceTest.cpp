// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Location/DesktopLocationService.h"
#include "Support/FakePlatform.h"
#include "Support/PlayedService.h"
#include "Support/Table.h"

#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using Answer = Permissions::Answer;
using Status = LocationAuthorizationStatus;

namespace {
const QString geoClue = u"org.freedesktop.GeoClue2"_s;
const QString serviceName = u"service"_s;
const QString programName = u"program"_s;
const QVariant client = QVariant::fromValue(QDBusObjectPath(u"/org/freedesktop/GeoClue2/Client/1"_s));
const QVariant place = QVariant::fromValue(QDBusObjectPath(u"/org/freedesktop/GeoClue2/Location/1"_s));

/// The position service of the desktop. It gives clients and starts them unless told to hang.
class GeoClue : public PlayedService
{
public:
    explicit GeoClue(PrivateBus &bus)
        : PlayedService(bus, geoClue, u"/org/freedesktop/GeoClue2"_s)
    {
        answers = {{u"GetClient"_s, {client}}, {u"Start"_s, {}}};
    }

    /// Tells of a new position, which is to be asked for.
    void tellOfMovement()
    {
        QDBusMessage signal = QDBusMessage::createSignal(client.value<QDBusObjectPath>().path(), geoClue + u".Client"_s,
                                                         u"LocationUpdated"_s);
        send(signal << place << place);
    }

    void answerWith(const QDBusMessage &question, double latitude, double longitude)
    {
        send(question.createReply(QVariantMap{{u"Latitude"_s, latitude}, {u"Longitude"_s, longitude}}));
        PrivateBus::letArrive(serviceName, programName);
    }

    void move(double latitude, double longitude)
    {
        tellOfMovement();
        answerWith(next(u"GetAll"_s), latitude, longitude);
    }
};

/// The adapter on a bus of the test's, and what it has told.
struct Scene
{
    explicit Scene(Answer answer = Answer::authorized)
    {
        permissions.answers.insert(Permissions::Subject::location, answer);
        location.setDistanceFilter(500.0);
        QObject::connect(&location, &LocationService::locationsUpdated, &location,
                         [this](const std::vector<Coordinate> &positions) {
                             for (const Coordinate &each : positions)
                                 told.append(u"%1 %2"_s.arg(each.latitude).arg(each.longitude));
                         });
    }

    void answer(Answer answer) { permissions.setAnswer(Permissions::Subject::location, answer); }

    PrivateBus bus;
    std::unique_ptr<GeoClue> service = std::make_unique<GeoClue>(bus);
    FakePermissions permissions;
    DesktopLocationService location{permissions, bus.connection(programName), u"orvalia"_s};
    QStringList told;
};
}

class DesktopLocationServiceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void positionArrives()
    {
        Scene scene;
        scene.location.startUpdatingLocation();
        scene.location.startUpdatingLocation();
        scene.service->next(u"Start"_s);
        scene.location.startUpdatingLocation();
        scene.service->move(28.1, -15.4);
        scene.service->move(91, -15);
        scene.service->move(std::nan(""), -15);
        scene.service->move(28, -181);
        scene.service->move(29, -15);
        QCOMPARE(scene.told, (QStringList{u"28.1 -15.4"_s, u"29 -15"_s}));
        QCOMPARE(scene.service->count(u"GetClient"_s), 1);
        QStringList properties;
        while (scene.service->count(u"Set"_s) > 0) {
            const QVariantList set = scene.service->next(u"Set"_s).arguments();
            properties.append(set.value(1).toString() + u' ' + set.value(2).value<QDBusVariant>().variant().toString());
        }
        // Street level asks for no satellites.
        QCOMPARE(properties.join(u", "_s), u"DesktopId orvalia, RequestedAccuracyLevel 6, DistanceThreshold 500"_s);
    }

    void deniedAnswerWithholdsPositions()
    {
        Scene scene;
        scene.location.startUpdatingLocation();
        scene.service->next(u"Start"_s);
        scene.service->tellOfMovement();
        const QDBusMessage question = scene.service->next(u"GetAll"_s);
        scene.answer(Answer::denied);
        scene.service->answerWith(question, 27, -15);
        scene.service->next(u"Stop"_s);
        scene.service->tellOfMovement();
        PrivateBus::letArrive(serviceName, programName);
        PrivateBus::letArrive(programName, serviceName);
        QCOMPARE(scene.service->count(u"GetAll"_s), 0);

        scene.service->answers.remove(u"GetClient"_s);
        scene.service->next(u"GetClient"_s);
        scene.answer(Answer::authorized);
        scene.location.startUpdatingLocation();
        const QDBusMessage search = scene.service->next(u"GetClient"_s);
        scene.answer(Answer::denied);
        scene.service->send(search.createReply(client));
        PrivateBus::letArrive(serviceName, programName);
        PrivateBus::letArrive(programName, serviceName);
        QVERIFY2(scene.service->count(u"Start"_s) == 0, "begun after the answer was taken back");

        scene.answer(Answer::authorized);
        scene.location.startUpdatingLocation();
        scene.service->send(scene.service->next(u"GetClient"_s).createReply(client));
        scene.service->next(u"Start"_s);
        scene.service->move(30, -15);
        QCOMPARE(scene.told, QStringList{u"30 -15"_s});
    }

    void refusedAccessIsDeniedForThisRun()
    {
        Scene scene;
        scene.service->answers.remove(u"Start"_s);
        QSignalSpy changed(&scene.location, &LocationService::authorizationChanged);
        QVERIFY(changed.wait());
        scene.location.startUpdatingLocation();
        scene.service->send(scene.service->next(u"Start"_s).createErrorReply(QDBusError::AccessDenied, u"denied"_s));
        QTRY_COMPARE(changed.count(), 2);
        QVERIFY(scene.location.authorizationStatus() == Status::denied);
        QVERIFY2(scene.permissions.answer(Permissions::Subject::location) == Answer::authorized,
                 "the user's own answer stands");
        scene.answer(Answer::authorized);
        QVERIFY(scene.location.authorizationStatus() == Status::denied);
    }

    void serviceThatIsAbsentHangsFailsOrDiesIsFoundLater()
    {
        Scene scene;
        QSignalSpy changed(&scene.location, &LocationService::authorizationChanged);
        scene.service.reset();
        scene.location.startUpdatingLocation();
        PrivateBus::goRound(programName);

        scene.service = std::make_unique<GeoClue>(scene.bus);
        scene.service->answers.clear();
        scene.location.startUpdatingLocation();
        scene.location.startUpdatingLocation();
        PrivateBus::letArrive(programName, serviceName);
        QVERIFY2(scene.service->count(u"GetClient"_s) == 1, "asked again while the answer is outstanding");
        scene.service->send(scene.service->next(u"GetClient"_s).createReply(client));
        scene.service->send(scene.service->next(u"Start"_s).createErrorReply(QDBusError::Failed, u"no source"_s));
        PrivateBus::letArrive(serviceName, programName);
        scene.location.startUpdatingLocation();
        scene.service->send(scene.service->next(u"GetClient"_s).createReply(client));
        scene.service->next(u"Start"_s);

        scene.service.reset();
        PrivateBus::goRound(programName);
        scene.service = std::make_unique<GeoClue>(scene.bus);
        scene.location.startUpdatingLocation();
        scene.service->next(u"Start"_s);
        scene.service->move(28, -15);
        QCOMPARE(scene.told, QStringList{u"28 -15"_s});
        QVERIFY(scene.location.authorizationStatus() == Status::authorizedAlways);
        QCOMPARE(changed.count(), 1);

        DesktopLocationService nowhere(scene.permissions, QDBusConnection(u"no such bus"_s), u"orvalia"_s);
        nowhere.startUpdatingLocation();
        PrivateBus::goRound(programName);
        QVERIFY(nowhere.authorizationStatus() == Status::authorizedAlways);
    }

    void usersAnswerIsTheStatus_data()
    {
        const Table<bool, Answer, int> row;
        row("fake, refused", true, Answer::denied, int(Status::denied));
        row("fake, granted", true, Answer::authorized, int(Status::authorizedAlways));
        row("real, refused", false, Answer::denied, int(Status::denied));
        row("real, granted", false, Answer::authorized, int(Status::authorizedAlways));
    }

    void usersAnswerIsTheStatus()
    {
        const auto [isFake, answer, status] = Table<bool, Answer, int>::current();
        Scene scene(Answer::notDetermined);
        FakeLocationService fake;
        LocationService &location = isFake ? static_cast<LocationService &>(fake) : scene.location;
        QSignalSpy changed(&location, &LocationService::authorizationChanged);
        QVERIFY(location.authorizationStatus() == Status::notDetermined);
        QVERIFY2(changed.isEmpty() && changed.wait(), "told once after construction");
        location.requestAlwaysAuthorization();
        QCOMPARE(scene.permissions.isPending(Permissions::Subject::location), !isFake);
        QCOMPARE(fake.permissionRequests, int(isFake));
        scene.answer(answer);
        if (isFake)
            fake.change(Status(status));
        QVERIFY2(changed.count() == 1, "told inside a call");
        QVERIFY(changed.wait());
        QCOMPARE(int(location.authorizationStatus()), status);
        location.startUpdatingLocation();
        location.startUpdatingLocation();
        PrivateBus::letArrive(programName, serviceName);
        QCOMPARE(changed.count(), 2);
    }
};

QTEST_GUILESS_MAIN(DesktopLocationServiceTest)
#include "DesktopLocationServiceTest.moc"
