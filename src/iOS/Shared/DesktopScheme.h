// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QObject>
#include <QtQml/qqmlregistration.h>

/// What the desktop's look means to Theme, as bindable values.
class DesktopScheme : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool dark READ isDark NOTIFY changed)
    Q_PROPERTY(bool reducedMotion READ reducedMotion NOTIFY changed)
    Q_PROPERTY(bool hasMenuBar READ hasMenuBar NOTIFY changed)

public:
    /// Reads the platform in force, and follows it.
    explicit DesktopScheme(QObject *parent = nullptr);

    bool isDark() const { return m_dark; }
    bool reducedMotion() const { return m_reducedMotion; }
    bool hasMenuBar() const { return m_hasMenuBar; }

Q_SIGNALS:
    void changed();

private:
    void update();

    bool m_dark = false;
    bool m_reducedMotion = false;
    bool m_hasMenuBar = false;
};
