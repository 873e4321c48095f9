// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Appearance/PortalAppearance.h"
#include "Support/PrivateBus.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QGuiApplication>
#include <QPalette>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using Settings = QMap<QString, QVariantMap>;
Q_DECLARE_METATYPE(Settings)

namespace {
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString appearanceSpace = QStringLiteral("org.freedesktop.appearance");
const QString interfaceSpace = QStringLiteral("org.gnome.desktop.interface");

/// Answers ReadAll with what a test set.
class StandInPortal : public QDBusVirtualObject
{
public:
    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        if (message.member() != QLatin1String("ReadAll"))
            return false;
        asked = message.arguments().value(0).toStringList();
        return connection.send(message.createReply(QVariant::fromValue(settings)));
    }

    void announce(const QDBusConnection &bus, const QString &space, const QString &key, const QVariant &value)
    {
        QDBusMessage signal = QDBusMessage::createSignal(portalPath, QStringLiteral("org.freedesktop.portal.Settings"),
                                                         QStringLiteral("SettingChanged"));
        signal << space << key << QVariant::fromValue(QDBusVariant(value));
        bus.send(signal);
    }

    Settings settings;
    QStringList asked;
};
}

class PortalAppearanceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qDBusRegisterMetaType<Settings>(); }

    void init() { m_bus = std::make_unique<PrivateBus>(); }

    void cleanup()
    {
        QGuiApplication::setPalette(QPalette());
        m_bus.reset();
    }

    void portalDecides_data()
    {
        QTest::addColumn<QVariant>("scheme");
        QTest::addColumn<QVariant>("animations");
        QTest::addColumn<bool>("dark");
        QTest::addColumn<bool>("reducedMotion");
        QTest::newRow("dark") << QVariant(1u) << QVariant(true) << true << false;
        QTest::newRow("light") << QVariant(2u) << QVariant(true) << false << false;
        QTest::newRow("no preference leaves it to the light palette")
            << QVariant(0u) << QVariant(true) << false << false;
        QTest::newRow("outside the protocol") << QVariant(7u) << QVariant(true) << false << false;
        QTest::newRow("a text for a number") << QVariant(QStringLiteral("dark")) << QVariant(true) << false << false;
        QTest::newRow("animations off") << QVariant(2u) << QVariant(false) << false << true;
    }

    void portalDecides()
    {
        QFETCH(QVariant, scheme);
        QFETCH(QVariant, animations);
        StandInPortal portal;
        portal.settings = {{appearanceSpace, {{QStringLiteral("color-scheme"), scheme}}},
                           {interfaceSpace, {{QStringLiteral("enable-animations"), animations}}}};
        startPortal(portal);

        PortalAppearance appearance(programBus());
        QSignalSpy changed(&appearance, &Appearance::changed);
        QVERIFY(changed.wait());
        QCOMPARE(portal.asked, QStringList({appearanceSpace, interfaceSpace}));
        QTEST(appearance.colorScheme() == Appearance::ColorScheme::dark, "dark");
        QTEST(appearance.reducedMotion(), "reducedMotion");
    }

    void aChangeIsFollowed()
    {
        StandInPortal portal;
        portal.settings = {{appearanceSpace, {{QStringLiteral("color-scheme"), 2u}}}};
        QDBusConnection desktop = startPortal(portal);
        PortalAppearance appearance(programBus());
        QSignalSpy changed(&appearance, &Appearance::changed);
        QVERIFY(changed.wait());

        portal.announce(desktop, appearanceSpace, QStringLiteral("color-scheme"), 1u);
        QVERIFY(changed.wait());
        QVERIFY(appearance.colorScheme() == Appearance::ColorScheme::dark);
        portal.announce(desktop, appearanceSpace, QStringLiteral("reduced-motion"), 1u);
        QVERIFY(changed.wait());
        QVERIFY(appearance.reducedMotion());
    }

    void aPortalThatStartsLaterIsAsked()
    {
        PortalAppearance appearance(programBus());
        QSignalSpy changed(&appearance, &Appearance::changed);
        StandInPortal portal;
        portal.settings = {{appearanceSpace, {{QStringLiteral("color-scheme"), 1u}}}};
        startPortal(portal);
        QVERIFY(changed.wait());
        QVERIFY(appearance.colorScheme() == Appearance::ColorScheme::dark);
    }

    void aRegistrarOfMenusMeansAMenuBar_data()
    {
        QTest::addColumn<QString>("service");
        QTest::addColumn<bool>("hasMenuBar");
        QTest::newRow("registrar") << QStringLiteral("com.canonical.AppMenu.Registrar") << true;
        QTest::newRow("another service") << QStringLiteral("com.canonical.AppMenu") << false;
    }

    void aRegistrarOfMenusMeansAMenuBar()
    {
        QFETCH(QString, service);
        m_bus->connection(QStringLiteral("desktop")).registerService(service);
        PortalAppearance appearance(programBus());
        QVERIFY(!appearance.hasMenuBar());
        PrivateBus::goRound(QStringLiteral("program"));
        QTEST(appearance.hasMenuBar(), "hasMenuBar");
    }

    void withoutAPortalThePaletteDecides()
    {
        PortalAppearance appearance(QDBusConnection(QStringLiteral("no such bus")));
        QSignalSpy changed(&appearance, &Appearance::changed);
        QVERIFY(appearance.colorScheme() == Appearance::ColorScheme::light);

        QPalette palette(Qt::black);
        palette.setColor(QPalette::WindowText, Qt::white);
        QGuiApplication::setPalette(palette);
        QTRY_VERIFY(!changed.isEmpty());
        QVERIFY(appearance.colorScheme() == Appearance::ColorScheme::dark);
    }

private:
    QDBusConnection startPortal(StandInPortal &portal)
    {
        QDBusConnection bus = m_bus->connection(QStringLiteral("desktop"));
        bus.registerVirtualObject(portalPath, &portal);
        bus.registerService(portalService);
        return bus;
    }

    QDBusConnection programBus() { return m_bus->connection(QStringLiteral("program")); }

    std::unique_ptr<PrivateBus> m_bus;
};

QTEST_MAIN(PortalAppearanceTest)
#include "PortalAppearanceTest.moc"
