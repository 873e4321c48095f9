// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Appearance/PortalAppearance.h"
#include "Support/PrivateBus.h"
#include "Support/Table.h"

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
        const Table<QVariant, bool, bool, bool> row;
        row("dark", 1u, true, true, false);
        row("light, animations off", 2u, false, false, true);
        row("no preference leaves it to the light palette", 0u, true, false, false);
        row("a text for a number", QStringLiteral("dark"), true, false, false);
    }

    void portalDecides()
    {
        const auto [scheme, animations, isDark, isReduced] = Table<QVariant, bool, bool, bool>::current();
        StandInPortal portal;
        portal.settings = {{appearanceSpace, {{QStringLiteral("color-scheme"), scheme}}},
                           {interfaceSpace, {{QStringLiteral("enable-animations"), animations}}}};
        QDBusConnection desktop = startPortal(portal);

        PortalAppearance appearance(programBus());
        QSignalSpy changed(&appearance, &Appearance::changed);
        QVERIFY(changed.wait());
        QCOMPARE(portal.asked, QStringList({appearanceSpace, interfaceSpace}));
        QCOMPARE(appearance.colorScheme() == Appearance::ColorScheme::dark, isDark);
        QCOMPARE(appearance.reducedMotion(), isReduced);

        portal.announce(desktop, appearanceSpace, QStringLiteral("color-scheme"), isDark ? 2u : 1u);
        QVERIFY(changed.wait());
        QCOMPARE(appearance.colorScheme() == Appearance::ColorScheme::dark, !isDark);
        portal.announce(desktop, appearanceSpace, QStringLiteral("reduced-motion"), 1u);
        QVERIFY(isReduced || changed.wait());
        QVERIFY(appearance.reducedMotion());
        QVERIFY(!appearance.hasMenuBar());
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

    void aRegistrarOfMenusMeansAMenuBar()
    {
        m_bus->connection(QStringLiteral("desktop")).registerService(QStringLiteral("com.canonical.AppMenu.Registrar"));
        PortalAppearance appearance(programBus());
        QVERIFY(!appearance.hasMenuBar());
        PrivateBus::goRound(QStringLiteral("program"));
        QVERIFY(appearance.hasMenuBar());
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
