// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Appearance/PortalAppearance.h"

#include "Platform/Support/DBusCall.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

namespace {
using Settings = QMap<QString, QVariantMap>;

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalSettings = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceSpace = QStringLiteral("org.freedesktop.appearance");
const QString interfaceSpace = QStringLiteral("org.gnome.desktop.interface");
}

Q_DECLARE_METATYPE(Settings)

PortalAppearance::PortalAppearance(const QDBusConnection &bus, QObject *parent)
    : Appearance(parent)
    , m_bus(bus)
{
    qDBusRegisterMetaType<Settings>();
    // A signal is not connected to a slot whose types Qt has not met, and nothing else may have used this one so far.
    qRegisterMetaType<QDBusVariant>();
    qGuiApp->installEventFilter(this);
    m_bus.connect(portalService, portalPath, portalSettings, QStringLiteral("SettingChanged"), this,
                  SLOT(settingChanged(QString, QString, QDBusVariant)));
    // A portal that starts later, or anew, has its say from then on.
    auto *watcher = new QDBusServiceWatcher(portalService, m_bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &PortalAppearance::askForSettings);
    askForSettings();
    askForMenuBar();
}

void PortalAppearance::askForMenuBar()
{
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    QDBusMessage call = QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus,
                                                       QStringLiteral("NameHasOwner"));
    call << QStringLiteral("com.canonical.AppMenu.Registrar");
    // Once: Qt itself looks for the registrar only when the first menu bar is made.
    callAsync(m_bus, call, this, [this](const QDBusPendingCallWatcher &answer) {
        const QDBusPendingReply<bool> reply = answer;
        m_hasMenuBar = !reply.isError() && reply.value();
        if (m_hasMenuBar)
            Q_EMIT changed();
    });
}

void PortalAppearance::askForSettings()
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(portalService, portalPath, portalSettings, QStringLiteral("ReadAll"));
    call << QStringList{appearanceSpace, interfaceSpace};
    callAsync(m_bus, call, this, [this](const QDBusPendingCallWatcher &answer) {
        const QDBusPendingReply<Settings> reply = answer;
        if (reply.isError())
            return;
        const Settings settings = reply.value();
        for (auto space = settings.begin(); space != settings.end(); ++space)
            for (auto setting = space->begin(); setting != space->end(); ++setting)
                take(space.key(), setting.key(), setting.value());
        Q_EMIT changed();
    });
}

Appearance::ColorScheme PortalAppearance::colorScheme() const
{
    if (m_colorScheme)
        return *m_colorScheme;
    const QPalette palette = QGuiApplication::palette();
    const bool isDark = palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
    return isDark ? ColorScheme::dark : ColorScheme::light;
}

bool PortalAppearance::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == qGuiApp && event->type() == QEvent::ApplicationPaletteChange)
        Q_EMIT changed();
    return Appearance::eventFilter(watched, event);
}

void PortalAppearance::settingChanged(const QString &space, const QString &key, const QDBusVariant &value)
{
    take(space, key, value.variant());
    Q_EMIT changed();
}

void PortalAppearance::take(const QString &space, const QString &key, const QVariant &value)
{
    if (space == appearanceSpace && key == QLatin1String("color-scheme")) {
        // 0 is "no preference".
        m_colorScheme.reset();
        if (value.toUInt() == 1)
            m_colorScheme = ColorScheme::dark;
        else if (value.toUInt() == 2)
            m_colorScheme = ColorScheme::light;
    } else if (space == appearanceSpace && key == QLatin1String("reduced-motion")) {
        m_wantsReducedMotion = value.toUInt() == 1;
    } else if (space == interfaceSpace && key == QLatin1String("enable-animations")) {
        m_hasNoAnimations = !value.toBool();
    }
}
