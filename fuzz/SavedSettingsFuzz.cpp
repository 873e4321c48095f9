// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fuzz.h"
#include "Platform/UserDefaults/SettingsUserDefaults.h"

#include <QStringList>

namespace {
const QStringList keys = {
    QStringLiteral("notificationsEnabled"),      QStringLiteral("settings.globalMagCategory"),
    QStringLiteral("settings.locationRadiusKm"), QStringLiteral("swarm.lastNotified.10in10"),
    QStringLiteral("lastUpdatedEarthquakes"),
};

/// A value as all the typed reads see it.
QString read(const UserDefaults &defaults, const QString &key)
{
    const auto date = defaults.dateValue(key);
    return QString::number(defaults.boolValue(key)) + u'|' + QString::number(defaults.doubleValue(key), 'g', 17) + u'|'
        + defaults.stringValue(key).value_or(QStringLiteral("none")) + u'|'
        + QString::number(date ? date->time_since_epoch().count() : -1);
}
}

/// Takes any bytes as the file of saved values: whatever can be read of it survives a write of another value.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString path = freshPath();
    writeFile(path, bytesOf(data, size));
    SettingsUserDefaults defaults(path);
    QStringList before;
    for (const QString &key : keys)
        before.append(read(defaults, key));
    defaults.setDouble(keys.first(), 37.5);
    before.first() = read(defaults, keys.first());

    // Two QSettings of one path share what they hold in memory.
    const QString copy = freshPath();
    writeFile(copy, readFile(path));
    const SettingsUserDefaults again(copy);
    require(again.doubleValue(keys.first()) == 37.5);
    for (qsizetype i = 0; i < keys.size(); ++i)
        require(read(again, keys.at(i)) == before.at(i));
    for (const QString &file : {path, copy, path + QStringLiteral(".unreadable"), copy + QStringLiteral(".unreadable")})
        QFile::remove(file);
    return 0;
}
