// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/UserDefaults/SettingsUserDefaults.h"
#include "Support/FakeUserDefaults.h"
#include "Support/Table.h"
#include "Support/TestInstant.h"

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {
const QString key = QStringLiteral("settings.value");
}

class UserDefaultsContractTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(QStringLiteral("config/settings.ini"));
    }

    void valuesKeepTheirTypes_data()
    {
        const Table<QVariant, QString> row;
        // What the four typed reads give: boolean, number, text, date.
        row("unset", {}, "0|0|none|none");
        row("true", true, "1|1|none|none");
        row("long number", 1.1 + 2.2, "1|3.3000000000000003|none|none");
        row("text", QStringLiteral("10min"), "0|0|10min|none");
        row("empty text", QStringLiteral(""), "0|0||none");
        row("text like a boolean", QStringLiteral("false"), "0|0|false|none");
        row("text like a date", QStringLiteral("2025-01-01T00:00:00Z"), "0|0|2025-01-01T00:00:00Z|none");
        row("date", QDateTime::fromMSecsSinceEpoch(-999, Qt::UTC), "0|0|none|1969-12-31T23:59:59.001Z");
        row("text of a list", QStringLiteral("a, b; \"c\" @d \\ %20"), "0|0|a, b; \"c\" @d \\ %20|none");
        row("text of many lines", QStringLiteral("ñ\n\tb\r\n"), "0|0|ñ\n\tb\r\n|none");
    }

    void valuesKeepTheirTypes()
    {
        const auto [saved, reads] = Table<QVariant, QString>::current();
        FakeUserDefaults fake;
        SettingsUserDefaults real(m_path);
        for (UserDefaults *defaults : std::initializer_list<UserDefaults *>{&fake, &real}) {
            if (saved.isValid())
                defaults->setObject(key, saved);
            QCOMPARE(summary(*defaults), reads);
        }
        QCOMPARE(summary(SettingsUserDefaults(copied())), reads);
        QCOMPARE(SettingsUserDefaults(copied()).object(key).isValid(), saved.isValid());
    }

    void removedKeyIsUnset()
    {
        FakeUserDefaults fake;
        SettingsUserDefaults real(m_path);
        const QString other = QStringLiteral("settings.valueOfAnother");
        for (UserDefaults *defaults : std::initializer_list<UserDefaults *>{&fake, &real}) {
            defaults->setBool(key, true);
            defaults->setBool(other, true);
            defaults->removeObject(key);
            QVERIFY(!defaults->object(key).isValid());
            QVERIFY(defaults->boolValue(other));
        }
        const SettingsUserDefaults again(copied());
        QVERIFY(!again.object(key).isValid());
        QVERIFY(again.boolValue(other));
    }

    void whatCannotBeReadCountsAsUnset_data()
    {
        const Table<QByteArray> row;
        row("no tag", QByteArray("[General]\nsettings.value=true\n"));
        row("unknown tag", QByteArray("[General]\nsettings.value=colour:red\n"));
        row("no boolean", QByteArray("[General]\nsettings.value=bool:perhaps\n"));
        row("no number", QByteArray("[General]\nsettings.value=number:many\n"));
        row("no date", QByteArray("[General]\nsettings.value=date:2025-02-31T00:00:00Z\n"));
        row("garbage", QByteArray("\0\x01\xff]]\n[settings.value\n\xfe", 22));
    }

    void whatCannotBeReadCountsAsUnset()
    {
        const auto [file] = Table<QByteArray>::current();
        writeFile(file);
        SettingsUserDefaults defaults(m_path);
        QVERIFY(!defaults.object(key).isValid());
        defaults.setBool(key, true);
        QVERIFY(fileContents(m_path).contains("bool:true"));
    }

    void unreadableFileIsKeptBesideTheNewOne()
    {
        const QByteArray file = "[General]\nsettings.other=bool:true\nthis is no setting\n";
        writeFile(file);
        SettingsUserDefaults defaults(m_path);
        defaults.setBool(key, true);
        QVERIFY(SettingsUserDefaults(copied()).boolValue(QStringLiteral("settings.other")));
        QCOMPARE(fileContents(m_path + QStringLiteral(".unreadable")), file);
    }

private:
    static QString summary(const UserDefaults &defaults)
    {
        const std::optional<Instant> date = defaults.dateValue(key);
        return QStringLiteral("%1|%2|%3|%4")
            .arg(defaults.boolValue(key))
            .arg(defaults.doubleValue(key), 0, 'g', QLocale::FloatingPointShortest)
            .arg(defaults.stringValue(key).value_or(QStringLiteral("none")),
                 date ? isoText(*date) : QStringLiteral("none"));
    }

    /// The file under another name: two QSettings of one name share what they hold in memory.
    QString copied() const
    {
        QString copy = m_path + QStringLiteral(".copy");
        QFile::remove(copy);
        QFile::copy(m_path, copy);
        return copy;
    }

    static QByteArray fileContents(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }

    void writeFile(const QByteArray &contents)
    {
        QVERIFY(QDir().mkpath(m_folder->filePath(QStringLiteral("config"))));
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(contents);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

QTEST_GUILESS_MAIN(UserDefaultsContractTest)
#include "UserDefaultsContractTest.moc"
