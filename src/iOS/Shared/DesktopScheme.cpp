// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/DesktopScheme.h"

#include "Platform/Appearance/Appearance.h"
#include "Platform/Support/Platform.h"

DesktopScheme::DesktopScheme(QObject *parent)
    : QObject(parent)
{
    connect(&Platform::current().appearance, &Appearance::changed, this, &DesktopScheme::update);
    update();
}

void DesktopScheme::update()
{
    const Appearance &appearance = Platform::current().appearance;
    m_dark = appearance.colorScheme() == Appearance::ColorScheme::dark;
    m_reducedMotion = appearance.reducedMotion();
    m_hasMenuBar = appearance.hasMenuBar();
    Q_EMIT changed();
}
