// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Appearance/Appearance.h"

#include <QDBusConnection>

#include <optional>

class QDBusPendingCallWatcher;
class QDBusVariant;

/// The desktop's settings portal (org.freedesktop.portal.Settings), asked once and then listened to. Where it gives no
/// scheme, a palette with light text on a dark ground counts as dark. A menu bar there is where the registrar of menus
/// (com.canonical.AppMenu.Registrar) was on the bus when this was made.
class PortalAppearance : public Appearance
{
    Q_OBJECT

public:
    /// Asks over `bus`, without waiting for the answer. A bus that is not connected is fine: the palette decides.
    explicit PortalAppearance(const QDBusConnection &bus, QObject *parent = nullptr);

    ColorScheme colorScheme() const override;
    bool reducedMotion() const override { return m_reducedMotion; }
    bool hasMenuBar() const override { return m_hasMenuBar; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private Q_SLOTS:
    void settingChanged(const QString &space, const QString &key, const QDBusVariant &value);
    void askAgain();

private:
    void askForMenuBar();
    void takeAll(QDBusPendingCallWatcher *answer);
    /// Stores one setting, when it is one of ours. Values outside the protocol count as "no preference".
    void take(const QString &space, const QString &key, const QVariant &value);

    QDBusConnection m_bus;
    std::optional<ColorScheme> m_colorScheme;
    bool m_reducedMotion = false;
    bool m_hasMenuBar = false;
};
