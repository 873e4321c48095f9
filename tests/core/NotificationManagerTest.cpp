// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Notifications/NotificationManager.h"
#include "Support/Table.h"
#include "Support/World.h"

#include <QProcess>
#include <QTest>

#include <sys/resource.h>

#include <cstdio>

using namespace std::chrono_literals;

namespace {
Earthquake earthquake(double magnitude, double depthKm)
{
    return Earthquake(QStringLiteral("es2025abc"), Instant{}, 28, -16, depthKm, magnitude, QStringLiteral("mbLg"),
                      std::nullopt, QStringLiteral("<b>SE</b> %@ & LLANO"), Instant{});
}

/// What a child process does: sends one alert of the given kind with the given length.
int sendOne(const QByteArray &kind, double kilometers)
{
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    World world;
    if (kind == "depth")
        NotificationManager::shared().send(MagnitudeAlert{earthquake(3.0, kilometers)});
    else
        NotificationManager::shared().send(ProximityAlert{earthquake(3.0, 1.0), kilometers});
    std::puts(world.userNotificationCenter.sent.front().body.toUtf8().constData());
    return 0;
}
}
Q_DECLARE_METATYPE(EarthquakeNotificationEvent)

class NotificationManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void alertBecomesANotification_data()
    {
        const Table<EarthquakeNotificationEvent, QString, QString, QString, bool> row;
        const QString place = QStringLiteral(" — <b>SE</b> %@ & LLANO");
        const auto magnitude = [&](double value, double depthKm, const char *label, const char *body, bool urgent) {
            row(body, MagnitudeAlert{earthquake(value, depthKm)}, "es2025abc", QString::fromUtf8(label) + place, body,
                urgent);
        };
        magnitude(1.25, 12.9, "Micro", "Magnitude 1.2, depth 12 km", false);
        magnitude(2.0, 0.4, "Leve", "Magnitude 2.0, depth 0 km", false);
        magnitude(5.96, -0.9, "Moderado", "Magnitude 6.0, depth 0 km", false);
        magnitude(6.0, -2.9, "Fuerte", "Magnitude 6.0, depth -2 km", true);
        magnitude(7.0, 30.0, "Muy Fuerte", "Magnitude 7.0, depth 30 km", true);
        const auto proximity = [&](double value, double distanceKm, const char *body) {
            row(body, ProximityAlert{earthquake(value, 5.0), distanceKm}, "proximity-es2025abc",
                QStringLiteral("Earthquake near you") + place, body, false);
        };
        proximity(2.0, 49.99, "Magnitude 2.0 at 49 km from your location");
        proximity(7.5, 0.9, "Magnitude 7.5 at 0 km from your location");
        const auto swarm = [&](qint64 count, qint64 windowMinutes, const char *body) {
            row(body, SwarmAlert{count, windowMinutes}, "swarm-1735689601", "Seismic swarm detected", body, true);
        };
        swarm(14, 10, "14 earthquakes in the last 10 min");
        swarm(1, 59, "1 earthquakes in the last 59 min");
        swarm(30, 60, "30 earthquakes in the last 1 h");
        swarm(30, 90, "30 earthquakes in the last 1 h");
        swarm(1140, 1440, "1140 earthquakes in the last 24 h");
    }

    void alertBecomesANotification()
    {
        const auto [alert, identifier, title, body, isUrgent] =
            Table<EarthquakeNotificationEvent, QString, QString, QString, bool>::current();
        World world;
        world.clock.advance(1999ms); // 2025-01-01T00:00:01.999Z
        NotificationManager::shared().send(alert);
        QCOMPARE(world.userNotificationCenter.sent.size(), size_t(1));
        const UserNotificationRequest &request = world.userNotificationCenter.sent.front();
        QCOMPARE(request.identifier, identifier);
        QCOMPARE(request.title, title);
        QCOMPARE(request.body, body);
        QCOMPARE(request.interruptionLevel == InterruptionLevel::timeSensitive, isUrgent);
    }

    void lengthThatNoWholeNumberHoldsEndsTheProcess_data()
    {
        const Table<QString, QString, QByteArray> row;
        row.unnamed("depth", "9223372036854775808", {});
        row.unnamed("depth", "-9223372036854777856", {});
        row.unnamed("depth", "9223372036854774784", "Magnitude 3.0, depth 9223372036854774784 km\n");
        row.unnamed("distance", "nan", {});
        row.unnamed("distance", "1e18", "Magnitude 3.0 at 1000000000000000000 km from your location\n");
    }

    void lengthThatNoWholeNumberHoldsEndsTheProcess()
    {
        const auto [kind, kilometers, printed] = Table<QString, QString, QByteArray>::current();
        const QTemporaryDir folder;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("TMPDIR"), folder.path()); // for what an aborted child leaves behind
        QProcess child;
        child.setProcessEnvironment(environment);
        child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--send"), kind, kilometers});
        QVERIFY(child.waitForFinished());
        QCOMPARE(child.readAllStandardOutput(), printed);
        const QByteArray complaint = child.readAllStandardError();
        if (printed.isEmpty()) {
            QCOMPARE(child.exitStatus(), QProcess::CrashExit);
            QCOMPARE(complaint, "orvalia: an alert's depth or distance is not a number of kilometres\n");
        } else {
            QCOMPARE(child.exitStatus(), QProcess::NormalExit);
            QCOMPARE(complaint, "");
        }
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    if (argc == 4 && QByteArrayView(argv[1]) == "--send")
        return sendOne(argv[2], QByteArray(argv[3]).toDouble());
    NotificationManagerTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "NotificationManagerTest.moc"
