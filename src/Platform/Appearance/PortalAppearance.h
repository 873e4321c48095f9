// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Appearance/Appearance.h"

#include <QDBusConnection>

#include <optional>

class QDBusPendingCallWatcher;
class QDBusVariant;

/// The desktop's settings portal (org.freedesktop.portal.Settings), asked once and then listened to. Where it gives no
/// scheme, a palette with light text on a dark ground counts as dark.
class PortalAppearance : public Appearance
{
    Q_OBJECT

public:
    /// Asks over `bus`, without waiting for the answer. A bus that is not connected is fine: the palette decides.
    explicit PortalAppearance(const QDBusConnection &bus, QObject *parent = nullptr);

    ColorScheme colorScheme() const override;
    bool reducedMotion() const override { return m_reducedMotion; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private Q_SLOTS:
    void settingChanged(const QString &space, const QString &key, const QDBusVariant &value);
    void askAgain();

private:
    void takeAll(QDBusPendingCallWatcher *answer);
    /// Stores one setting, when it is one of ours. Values outside the protocol count as "no preference".
    void take(const QString &space, const QString &key, const QVariant &value);

    QDBusConnection m_bus;
    std::optional<ColorScheme> m_colorScheme;
    bool m_reducedMotion = false;
};
