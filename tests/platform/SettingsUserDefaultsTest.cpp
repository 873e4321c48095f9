// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/UserDefaults/SettingsUserDefaults.h"
#include "Support/FakeUserDefaults.h"
#include "Support/Table.h"
#include "Support/TestInstant.h"

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>

#include <map>
#include <memory>

using namespace Qt::StringLiterals;

namespace {
const QString key = u"settings.value"_s;
const QString other = u"settings.valueOfAnother"_s;
}

class SettingsUserDefaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(u"new folder/settings.ini"_s);
    }

    void valuesKeepTheirTypes_data()
    {
        const Table<QVariant, QString> row;
        // What the four typed reads give: boolean, number, text, date.
        row("unset", {}, "0|0|none|none");
        row("true", true, "1|1|none|none");
        row("long number", 1.1 + 2.2, "1|3.3000000000000003|none|none");
        row("text", u"10min"_s, "0|0|10min|none");
        row("empty text", u""_s, "0|0||none");
        row("text like a boolean", u"false"_s, "0|0|false|none");
        row("text like a date", u"2025-01-01T00:00:00Z"_s, "0|0|2025-01-01T00:00:00Z|none");
        row("date", QDateTime::fromMSecsSinceEpoch(-999, Qt::UTC), "0|0|none|1969-12-31T23:59:59.001Z");
        row("text of a list", u"a, b; \"c\" @d \\ %20"_s, "0|0|a, b; \"c\" @d \\ %20|none");
        row("text of many lines", u"ñ\n\tb\r\n"_s, "0|0|ñ\n\tb\r\n|none");
    }

    void valuesKeepTheirTypes()
    {
        const auto [saved, reads] = Table<QVariant, QString>::current();
        FakeUserDefaults fake;
        SettingsUserDefaults real(m_path);
        if (saved.isValid()) {
            fake.setObject(key, saved);
            real.setObject(key, saved);
        }
        const SettingsUserDefaults again(m_path);
        for (const auto &[name, defaults] : named(fake, real, again)) {
            QCOMPARE(name + summary(*defaults), name + reads);
            QVERIFY2(defaults->object(key).isValid() == saved.isValid(), qPrintable(name));
        }
    }

    void removedKeyIsUnset()
    {
        FakeUserDefaults fake;
        SettingsUserDefaults real(m_path);
        for (UserDefaults *defaults : std::initializer_list<UserDefaults *>{&fake, &real}) {
            defaults->setBool(key, true);
            defaults->setBool(other, true);
            defaults->removeObject(key);
        }
        const SettingsUserDefaults again(m_path);
        for (const auto &[name, defaults] : named(fake, real, again)) {
            QVERIFY2(!defaults->object(key).isValid(), qPrintable(name));
            QVERIFY2(defaults->boolValue(other), qPrintable(name));
        }
    }

    void whatCannotBeReadCountsAsUnset_data()
    {
        const Table<QByteArray> row;
        row("no tag", "[General]\nsettings.value=true\n");
        row("unknown tag", "[General]\nsettings.value=colour:red\n");
        row("no boolean", "[General]\nsettings.value=bool:perhaps\n");
        row("no number", "[General]\nsettings.value=number:many\n");
        row("no date", "[General]\nsettings.value=date:2025-02-31T00:00:00Z\n");
        row("garbage", QByteArray("\0\x01\xff]]\n[settings.value\n\xfe", 22));
    }

    void whatCannotBeReadCountsAsUnset()
    {
        writeFile(std::get<QByteArray>(Table<QByteArray>::current()));
        SettingsUserDefaults defaults(m_path);
        QVERIFY(!defaults.object(key).isValid());
        defaults.setBool(key, true);
        QVERIFY(contents(m_path).contains("bool:true"));
    }

    void unreadableFilesAreKeptBesideTheNewOne()
    {
        const QByteArray first = "[General]\nsettings.valueOfAnother=bool:true\nthis is no setting\n";
        const QByteArray second = first + "nor is this\n";
        for (const QByteArray &file : {first, second, second}) {
            writeFile(file);
            SettingsUserDefaults(m_path).setBool(key, true);
            QVERIFY(SettingsUserDefaults(m_path).boolValue(other));
        }
        QCOMPARE(contents(m_path + u".unreadable"_s), first + second);
    }

private:
    /// What is to read alike, by the name of a failure: the fake, the real one, and the real one of the next start.
    static std::map<QString, const UserDefaults *> named(const FakeUserDefaults &fake, const SettingsUserDefaults &real,
                                                         const SettingsUserDefaults &again)
    {
        return {{u"fake: "_s, &fake}, {u"real: "_s, &real}, {u"read again: "_s, &again}};
    }

    static QString summary(const UserDefaults &defaults)
    {
        const std::optional<Instant> date = defaults.dateValue(key);
        return u"%1|%2|%3|%4"_s.arg(defaults.boolValue(key))
            .arg(defaults.doubleValue(key), 0, 'g', QLocale::FloatingPointShortest)
            .arg(defaults.stringValue(key).value_or(u"none"_s), date ? isoText(*date) : u"none"_s);
    }

    static QByteArray contents(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }

    void writeFile(const QByteArray &contents)
    {
        QFile file(m_path);
        QVERIFY(QDir(m_folder->path()).mkpath(u"new folder"_s) && file.open(QIODevice::WriteOnly));
        file.write(contents);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

QTEST_GUILESS_MAIN(SettingsUserDefaultsTest)
#include "SettingsUserDefaultsTest.moc"
