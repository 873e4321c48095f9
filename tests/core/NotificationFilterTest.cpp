// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Notifications/NotificationFilter.h"
#include "Core/Notifications/NotificationSettings.h"
#include "Support/Table.h"
#include "Support/World.h"

#include <QDateTime>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {
/// So many events, each so long ago.
struct Batch
{
    int count;
    std::chrono::milliseconds age;
};
using Batches = std::vector<Batch>;

/// The user stands where the equator meets the prime meridian: a degree of longitude is 111.3195 km there, a degree of
/// latitude 110.5744 km. A sphere would have 111.2 km for both.
constexpr Coordinate userLocation{0, 0};
constexpr Coordinate far{40, 0};

Earthquake quake(const char *eventID, double magnitude, Coordinate place, Instant date = Instant{})
{
    return Earthquake(QString::fromLatin1(eventID), date, place.latitude, place.longitude, 10, magnitude, u"mbLg"_s,
                      std::nullopt, u"SE VALVERDE"_s);
}

QString text(const EarthquakeNotificationEvent &alert)
{
    if (const auto *magnitude = std::get_if<MagnitudeAlert>(&alert))
        return u"M:"_s + magnitude->earthquake.eventID();
    if (const auto *proximity = std::get_if<ProximityAlert>(&alert))
        return u"P:%1@%2"_s.arg(proximity->earthquake.eventID()).arg(proximity->distanceKm, 0, 'f', 3);
    const auto &swarm = std::get<SwarmAlert>(alert);
    return u"S:%1/%2"_s.arg(swarm.count).arg(swarm.windowMinutes);
}

/// Switched on are alerts, unless "off" is among the kinds, and the kinds named; the magnitude from 4.0, the radius
/// 200 km.
struct Scene
{
    explicit Scene(const QString &kinds)
    {
        settings.setIsEnabled(!kinds.contains(u"off"));
        settings.setGlobalMagnitudeEnabled(kinds.contains(u"magnitude"));
        settings.setGlobalMagnitudeCategory(MagnitudeCategory::moderate);
        settings.setLocationNotificationsEnabled(kinds.contains(u"proximity"));
        settings.setLocationRadiusKm(200.0);
        settings.setSwarmNotificationsEnabled(kinds.contains(u"swarm"));
        world.userDefaults.writes.clear();
    }

    QString alerts(const std::vector<Earthquake> &fresh, const Batches &batches = {},
                   const std::optional<Coordinate> &position = userLocation) const
    {
        std::vector<Earthquake> recent;
        for (const Batch &batch : batches)
            for (int i = 0; i < batch.count; ++i)
                recent.push_back(quake("recent", 1.0, far, world.clock.now() - batch.age));
        QStringList texts;
        for (const EarthquakeNotificationEvent &alert : NotificationFilter(settings, position).evaluate(fresh, recent))
            texts.append(text(alert));
        return texts.join(u' ');
    }

    World world;
    NotificationSettings settings;
};
}
Q_DECLARE_METATYPE(Batches)

class NotificationFilterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void magnitudeReachesTheThreshold_data()
    {
        const Table<MagnitudeCategory, double, QString> row;
        row("micro, 0.0", MagnitudeCategory::micro, 0.0, "M:x");
        row("micro, -0.1", MagnitudeCategory::micro, -0.1, "");
        row("low, 2.0", MagnitudeCategory::low, 2.0, "M:x");
        row("low, 1.9", MagnitudeCategory::low, 1.9, "");
        row("moderate, 4.0", MagnitudeCategory::moderate, 4.0, "M:x");
        row("moderate, 3.96 shown as 4.0", MagnitudeCategory::moderate, 3.96, "");
        row("strong, 6.0", MagnitudeCategory::strong, 6.0, "M:x");
        row("strong, 5.9", MagnitudeCategory::strong, 5.9, "");
        row("major, 7.0", MagnitudeCategory::major, 7.0, "M:x");
        row("major, 6.9", MagnitudeCategory::major, 6.9, "");
        row("not a number", MagnitudeCategory::micro, std::numeric_limits<double>::quiet_NaN(), "");
    }

    void magnitudeReachesTheThreshold()
    {
        const auto [category, magnitude, expected] = Table<MagnitudeCategory, double, QString>::current();
        Scene scene(u"magnitude"_s);
        scene.settings.setGlobalMagnitudeCategory(category);
        QCOMPARE(scene.alerts({quake("x", magnitude, far)}), expected);
    }

    void distanceStaysWithinTheRadius_data()
    {
        const Table<double, Coordinate, QString> row;
        row("a degree north", 111.0, {1, 0}, "P:x@110.574");
        row("a degree east", 111.0, {0, 1}, "");
        row("a degree east, wider", 111.32, {0, 1}, "P:x@111.319");
        row("as far as the radius", 0.0, {0, 0}, "P:x@0.000");
        row("longitude told from the east", 1.0, {0, 359.999}, "P:x@0.111");
        row("the pole itself", 20'000.0, {90, 0}, "P:x@10001.966");
        row("beyond the pole", 1e9, {90.001, 0}, "");
    }

    void distanceStaysWithinTheRadius()
    {
        const auto [radiusKm, place, expected] = Table<double, Coordinate, QString>::current();
        Scene scene(u"proximity"_s);
        scene.settings.setLocationRadiusKm(radiusKm);
        QCOMPARE(scene.alerts({quake("x", 1.0, place)}), expected);
    }

    void stepsFollowOneAnother_data()
    {
        const Table<QString, bool, QString> row;
        row("all", "magnitude proximity swarm", true, "M:strong M:far M:strong P:weak@110.574 P:weak@110.574 S:10/10");
        row("no position", "magnitude proximity swarm", false, "M:strong M:far M:strong S:10/10");
        row("proximity alone", "proximity", true, "P:strong@110.574 P:weak@110.574 P:weak@110.574 P:strong@110.574");
        row("magnitude alone", "magnitude", true, "M:strong M:far M:strong");
        row("swarm alone", "swarm", true, "S:10/10");
        row("all switched off", "off magnitude proximity swarm", true, "");
    }

    void stepsFollowOneAnother()
    {
        const auto [switches, hasPosition, expected] = Table<QString, bool, QString>::current();
        const Scene scene(switches);
        const auto position = hasPosition ? std::optional(userLocation) : std::nullopt;
        const std::vector<Earthquake> fresh = {quake("strong", 5.0, {1, 0}), quake("weak", 1.0, {1, 0}),
                                               quake("far", 5.0, far), quake("weak", 1.0, {1, 0}),
                                               quake("strong", 5.0, {1, 0})};
        QCOMPARE(scene.alerts(fresh, {{10, 1min}}, position), expected);
        QCOMPARE(scene.world.userDefaults.writes.size(), expected.contains(u"S:") ? 1 : 0);
    }

    void swarmRulesCountTheirWindows_data()
    {
        const Table<Batches, QString, QString> row;
        row("at the start of 10 minutes", {{10, 10min}}, "S:10/10", "10in10");
        row("one before 10 minutes", {{9, 1min}, {1, 10min + 1ms}}, "", "");
        row("dated later than now", {{10, -1h}}, "S:10/10", "10in10");
        row("30 in the hour", {{9, 1min}, {21, 1h}}, "S:30/60", "30in60");
        row("one before the hour", {{29, 1h}, {1, 1h + 1ms}}, "", "");
        row("100 in two hours", {{100, 2h}}, "S:100/120", "100in120");
        row("one before two hours", {{99, 2h}, {1, 2h + 1ms}}, "", "");
        row("1000 in a day", {{1000, 24h}}, "S:1000/1440", "1000in1440");
        row("one before a day", {{999, 24h}, {1, 24h + 1ms}}, "", "");
        row("three rules at once", {{100, 10min}}, "S:100/10 S:100/60 S:100/120", "10in10 30in60 100in120");
        row("all, each with its own count", {{10, 10min}, {30, 1h}, {100, 2h}, {1000, 24h}},
            "S:10/10 S:40/60 S:140/120 S:1140/1440", "10in10 30in60 100in120 1000in1440");
    }

    void swarmRulesCountTheirWindows()
    {
        const auto [recent, expectedAlerts, expectedSaved] = Table<Batches, QString, QString>::current();
        const Scene scene(u"swarm"_s);
        QCOMPARE(scene.alerts({}, recent), expectedAlerts);
        const QStringList &writes = scene.world.userDefaults.writes;
        QCOMPARE(writes.join(u' ').remove(u"swarm.lastNotified."_s), expectedSaved);
        for (const QString &key : writes)
            QVERIFY(scene.world.userDefaults.dateValue(key) == scene.world.clock.now());
    }

    void swarmRuleThatFiredStaysSilent_data()
    {
        const Table<QVariant, QString> row;
        const QString others = u"S:100/60 S:100/120"_s;
        const QString all = u"S:100/10 S:100/60 S:100/120"_s;
        row("never", QVariant(), all);
        row("1799.999 s ago", ago(1799999ms), others);
        row("1800 s ago", ago(1800s), all);
        row("in an hour, by a clock set back", ago(-1h), others);
    }

    void swarmRuleThatFiredStaysSilent()
    {
        const auto [lastNotified, alerts] = Table<QVariant, QString>::current();
        Scene scene(u"swarm"_s);
        const QString key = u"swarm.lastNotified.10in10"_s;
        if (lastNotified.isValid())
            scene.world.userDefaults.values.insert(key, lastNotified);
        QCOMPARE(scene.alerts({}, {{100, 1min}}), alerts);
        const bool hasFired = alerts.startsWith(u"S:100/10 ");
        QCOMPARE(scene.world.userDefaults.values.value(key), hasFired ? ago(0s) : lastNotified);
    }

private:
    /// A saved moment so long before the one at which the clock of every World begins.
    static QVariant ago(std::chrono::milliseconds age)
    {
        const Instant moment = FakeClock().now() - age;
        return QDateTime::fromMSecsSinceEpoch(moment.time_since_epoch().count(), Qt::UTC);
    }
};

QTEST_GUILESS_MAIN(NotificationFilterTest)
#include "NotificationFilterTest.moc"
