// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Notifications/NotificationManager.h"
#include "Support/Table.h"
#include "Support/World.h"

#include <QTemporaryFile>
#include <QTest>

#include <cmath>
#include <csignal>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {
Earthquake earthquake(double magnitude, double depthKm)
{
    return Earthquake(u"es2025abc"_s, Instant{}, 28, -16, depthKm, magnitude, u"mbLg"_s, std::nullopt,
                      u"<b>SE</b> %@ & LLANO"_s, Instant{});
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
        const QString place = u" — <b>SE</b> %@ & LLANO"_s;
        const auto magnitude = [&](double value, double depthKm, const char *label, const char *body, bool urgent) {
            row(body, MagnitudeAlert{earthquake(value, depthKm)}, "es2025abc", QString::fromUtf8(label) + place, body,
                urgent);
        };
        magnitude(1.25, 12.9, "Micro", "Magnitude 1.2, depth 12 km", false);
        magnitude(2.0, 0.4, "Leve", "Magnitude 2.0, depth 0 km", false);
        magnitude(5.96, -0.9, "Moderado", "Magnitude 6.0, depth 0 km", false);
        magnitude(6.0, -2.9, "Fuerte", "Magnitude 6.0, depth -2 km", true);
        magnitude(7.0, 30.0, "Muy Fuerte", "Magnitude 7.0, depth 30 km", true);
        magnitude(3.0, 0x1.fffffffffffffp62, "Leve", "Magnitude 3.0, depth 9223372036854774784 km", false);
        magnitude(3.0, -0x1p63, "Leve", "Magnitude 3.0, depth -9223372036854775808 km", false);
        const auto proximity = [&](double value, double distanceKm, const char *body) {
            row(body, ProximityAlert{earthquake(value, 5.0), distanceKm}, "proximity-es2025abc",
                u"Earthquake near you"_s + place, body, false);
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
        world.userNotificationCenter.status = NotificationAuthorizationStatus::authorized;
        NotificationManager::shared().send(alert);
        QCOMPARE(world.userNotificationCenter.sent.size(), size_t(1));
        const UserNotificationRequest &request = world.userNotificationCenter.sent.front();
        QCOMPARE(request.identifier, identifier);
        QCOMPARE(request.title, title);
        QCOMPARE(request.body, body);
        QCOMPARE(request.interruptionLevel == InterruptionLevel::timeSensitive, isUrgent);
    }

    void lengthThatNoWholeNumberHoldsEndsTheProcess()
    {
        const World world;
        const std::vector<EarthquakeNotificationEvent> alerts = {
            MagnitudeAlert{earthquake(3.0, 0x1p63)},
            MagnitudeAlert{earthquake(3.0, -0x1.0000000000001p63)},
            ProximityAlert{earthquake(3.0, 1.0), std::nan("")},
        };
        for (const EarthquakeNotificationEvent &alert : alerts) {
            QTemporaryFile said;
            QVERIFY(said.open());
            const pid_t child = fork();
            if (child == 0) {
                const rlimit noCore{0, 0};
                setrlimit(RLIMIT_CORE, &noCore);
                std::signal(SIGABRT, SIG_DFL);
                dup2(said.handle(), STDERR_FILENO);
                NotificationManager::shared().send(alert);
                _exit(0);
            }
            int status = 0;
            waitpid(child, &status, 0);
            QVERIFY2(WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT, QByteArray::number(status));
            said.seek(0);
            QCOMPARE(said.readAll(), "orvalia: an alert's depth or distance is not a number of kilometres\n");
        }
    }
};

QTEST_GUILESS_MAIN(NotificationManagerTest)
#include "NotificationManagerTest.moc"
