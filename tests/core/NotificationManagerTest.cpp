// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Notifications/NotificationManager.h"
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
        QTest::addColumn<EarthquakeNotificationEvent>("alert");
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("body");
        QTest::addColumn<bool>("isUrgent");
        const QString place = QStringLiteral("<b>SE</b> %@ & LLANO");
        const auto magnitude = [&place](double value, double depthKm, const char *label, const char *body,
                                        bool urgent) {
            QTest::addRow("magnitude %g, depth %g", value, depthKm)
                << EarthquakeNotificationEvent(MagnitudeAlert{earthquake(value, depthKm)})
                << QStringLiteral("es2025abc") << QString::fromUtf8(label) + QStringLiteral(" — ") + place
                << QString::fromUtf8(body) << urgent;
        };
        magnitude(1.25, 12.9, "Micro", "Magnitude 1.2, depth 12 km", false);
        magnitude(2.0, 0.4, "Leve", "Magnitude 2.0, depth 0 km", false);
        magnitude(5.96, -0.9, "Moderado", "Magnitude 6.0, depth 0 km", false);
        magnitude(6.0, -2.9, "Fuerte", "Magnitude 6.0, depth -2 km", true);
        magnitude(7.0, 30.0, "Muy Fuerte", "Magnitude 7.0, depth 30 km", true);
        const auto proximity = [&place](double value, double distanceKm, const char *body) {
            QTest::addRow("proximity %g km", distanceKm)
                << EarthquakeNotificationEvent(ProximityAlert{earthquake(value, 5.0), distanceKm})
                << QStringLiteral("proximity-es2025abc") << QStringLiteral("Earthquake near you — ") + place
                << QString::fromUtf8(body) << false;
        };
        proximity(2.0, 49.99, "Magnitude 2.0 at 49 km from your location");
        proximity(7.5, 0.9, "Magnitude 7.5 at 0 km from your location");
        const auto swarm = [](qint64 count, qint64 windowMinutes, const char *body) {
            QTest::addRow("swarm of %lld minutes", windowMinutes)
                << EarthquakeNotificationEvent(SwarmAlert{count, windowMinutes}) << QStringLiteral("swarm-1735689601")
                << QStringLiteral("Seismic swarm detected") << QString::fromUtf8(body) << true;
        };
        swarm(14, 10, "14 earthquakes in the last 10 min");
        swarm(1, 59, "1 earthquakes in the last 59 min");
        swarm(30, 60, "30 earthquakes in the last 1 h");
        swarm(30, 90, "30 earthquakes in the last 1 h");
        swarm(1140, 1440, "1140 earthquakes in the last 24 h");
    }

    void alertBecomesANotification()
    {
        QFETCH(EarthquakeNotificationEvent, alert);
        World world;
        world.clock.advance(1999ms); // 2025-01-01T00:00:01.999Z
        NotificationManager::shared().send(alert);
        QCOMPARE(world.userNotificationCenter.sent.size(), size_t(1));
        const UserNotificationRequest &request = world.userNotificationCenter.sent.front();
        QTEST(request.identifier, "identifier");
        QTEST(request.title, "title");
        QTEST(request.body, "body");
        QTEST(request.interruptionLevel == InterruptionLevel::timeSensitive, "isUrgent");
    }

    void authorizationIsTheUsersAnswer_data()
    {
        QTest::addColumn<QVariant>("answer");
        QTest::addColumn<bool>("granted");
        QTest::newRow("granted") << QVariant(true) << true;
        QTest::newRow("refused") << QVariant(false) << false;
        QTest::newRow("failed") << QVariant() << false;
    }

    void authorizationIsTheUsersAnswer()
    {
        QFETCH(QVariant, answer);
        World world;
        if (answer.isValid())
            world.userNotificationCenter.answer = answer.toBool();
        QTEST(NotificationManager::shared().requestAuthorization().result(), "granted");
    }

    void lengthThatNoWholeNumberHoldsEndsTheProcess_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("kilometers");
        QTest::addColumn<QByteArray>("printed");
        const auto row = [](const char *kind, const char *kilometers, const char *printed) {
            QTest::addRow("%s of %s", kind, kilometers)
                << QString::fromLatin1(kind) << QString::fromLatin1(kilometers) << QByteArray(printed);
        };
        row("depth", "inf", "");
        row("depth", "nan", "");
        row("depth", "9223372036854775808", "");
        row("depth", "-9223372036854777856", "");
        row("depth", "9223372036854774784", "Magnitude 3.0, depth 9223372036854774784 km\n");
        row("depth", "-9223372036854775808", "Magnitude 3.0, depth -9223372036854775808 km\n");
        row("distance", "nan", "");
        row("distance", "1e19", "");
        row("distance", "1e18", "Magnitude 3.0 at 1000000000000000000 km from your location\n");
    }

    void lengthThatNoWholeNumberHoldsEndsTheProcess()
    {
        QFETCH(QString, kind);
        QFETCH(QString, kilometers);
        QFETCH(QByteArray, printed);
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
