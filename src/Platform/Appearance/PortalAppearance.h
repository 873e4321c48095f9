// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Appearance/Appearance.h"

#include <QDBusConnection>

#include <optional>

class QDBusVariant;

/// The desktop's settings portal (org.freedesktop.portal.Settings), asked at the start and whenever it starts anew, and
/// listened to in between. Where it gives no scheme, a palette with light text on a dark ground counts as dark. A menu
/// bar there is where the registrar of menus (com.canonical.AppMenu.Registrar) was on the bus when this was made.
class PortalAppearance : public Appearance
{
    Q_OBJECT

public:
    /// Asks over `bus`, without waiting for the answer. A bus that is not connected is fine: the palette decides.
    explicit PortalAppearance(const QDBusConnection &bus, QObject *parent = nullptr);

    ColorScheme colorScheme() const override;
    bool reducedMotion() const override { return m_wantsReducedMotion || m_hasNoAnimations; }
    bool hasMenuBar() const override { return m_hasMenuBar; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private Q_SLOTS:
    void settingChanged(const QString &space, const QString &key, const QDBusVariant &value);

private:
    void askForSettings();
    void askForMenuBar();
    /// Stores one setting, when it is one of ours. Values outside the protocol count as "no preference".
    void take(const QString &space, const QString &key, const QVariant &value);

    QDBusConnection m_bus;
    std::optional<ColorScheme> m_colorScheme;
    /// Said by the portal itself and by GNOME's own setting, of which either counts.
    bool m_wantsReducedMotion = false;
    bool m_hasNoAnimations = false;
    bool m_hasMenuBar = false;
};
