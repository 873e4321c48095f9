// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Appearance/PortalAppearance.h"
#include "Support/PlayedService.h"
#include "Support/Table.h"

#include <QDBusMetaType>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using Settings = QMap<QString, QVariantMap>;
Q_DECLARE_METATYPE(Settings)

namespace {
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString appearanceSpace = u"org.freedesktop.appearance"_s;
const QString interfaceSpace = u"org.gnome.desktop.interface"_s;

/// The desktop's portal, which tells these settings.
class Portal : public PlayedService
{
public:
    Portal(PrivateBus &bus, const Settings &settings)
        : PlayedService(bus, u"org.freedesktop.portal.Desktop"_s, portalPath)
    {
        answers.insert(u"ReadAll"_s, {QVariant::fromValue(settings)});
    }

    void announce(const QString &key, const QVariant &value)
    {
        QDBusMessage signal =
            QDBusMessage::createSignal(portalPath, u"org.freedesktop.portal.Settings"_s, u"SettingChanged"_s);
        send(signal << appearanceSpace << key << QVariant::fromValue(QDBusVariant(value)));
    }
};
}

class PortalAppearanceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qDBusRegisterMetaType<Settings>(); }

    void cleanup() { QGuiApplication::setPalette(QPalette()); }

    void portalDecides_data()
    {
        const Table<QVariant, bool, bool, bool> row;
        row("dark", 1u, true, true, false);
        row("light, animations off", 2u, false, false, true);
        row("no preference leaves it to the light palette", 0u, true, false, false);
        row("a text for a number", u"dark"_s, true, false, false);
    }

    void portalDecides()
    {
        const auto [scheme, animations, isDark, isReduced] = Table<QVariant, bool, bool, bool>::current();
        Portal portal(m_bus,
                      {{appearanceSpace, {{u"color-scheme"_s, scheme}}},
                       {interfaceSpace, {{u"enable-animations"_s, animations}}}});
        PortalAppearance appearance(m_bus.connection(u"program"_s));
        QSignalSpy changed(&appearance, &Appearance::changed);
        QVERIFY(changed.wait());
        QCOMPARE(portal.next(u"ReadAll"_s).arguments().value(0).toStringList(),
                 QStringList({appearanceSpace, interfaceSpace}));
        QCOMPARE(appearance.colorScheme() == Appearance::ColorScheme::dark, isDark);
        QCOMPARE(appearance.reducedMotion(), isReduced);

        portal.announce(u"color-scheme"_s, isDark ? 2u : 1u);
        QVERIFY(changed.wait());
        QCOMPARE(appearance.colorScheme() == Appearance::ColorScheme::dark, !isDark);
        for (const uint wanted : {1u, 0u}) {
            portal.announce(u"reduced-motion"_s, wanted);
            QVERIFY(changed.wait());
            QCOMPARE(appearance.reducedMotion(), wanted == 1 || isReduced);
        }
    }

    void aPortalThatStartsLaterIsAsked()
    {
        PortalAppearance appearance(m_bus.connection(u"program"_s));
        QSignalSpy changed(&appearance, &Appearance::changed);
        const Portal portal(m_bus, {{appearanceSpace, {{u"color-scheme"_s, 1u}}}});
        QVERIFY(changed.wait());
        QVERIFY(appearance.colorScheme() == Appearance::ColorScheme::dark);
    }

    void aRegistrarOfMenusMeansAMenuBar()
    {
        m_bus.connection(u"desktop"_s).registerService(u"com.canonical.AppMenu.Registrar"_s);
        PortalAppearance appearance(m_bus.connection(u"program"_s));
        QVERIFY(!appearance.hasMenuBar());
        PrivateBus::goRound(u"program"_s);
        QVERIFY(appearance.hasMenuBar());
    }

    void withoutAPortalThePaletteDecides()
    {
        PortalAppearance appearance(QDBusConnection(u"no such bus"_s));
        QSignalSpy changed(&appearance, &Appearance::changed);
        QVERIFY(appearance.colorScheme() == Appearance::ColorScheme::light);

        QPalette palette(Qt::black);
        palette.setColor(QPalette::WindowText, Qt::white);
        QGuiApplication::setPalette(palette);
        QTRY_VERIFY(!changed.isEmpty());
        QVERIFY(appearance.colorScheme() == Appearance::ColorScheme::dark);
    }

private:
    PrivateBus m_bus;
};

QTEST_MAIN(PortalAppearanceTest)
#include "PortalAppearanceTest.moc"
