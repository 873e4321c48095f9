// SPDX-License-Identifier: GPL-3.0-or-later
#include "macOS/NavigationState.h"

#include "Platform/Support/Platform.h"

#include <QQmlEngine>

NavigationState &NavigationState::shared()
{
    return Platform::shared<NavigationState>([] { return new NavigationState; });
}

NavigationState *NavigationState::create(QQmlEngine *, QJSEngine *)
{
    QQmlEngine::setObjectOwnership(&shared(), QQmlEngine::CppOwnership);
    return &shared();
}

void NavigationState::select(const QString &id)
{
    if (const std::optional<SidebarItem> item = SidebarItem::fromRawValue(id))
        setSidebarSelection(item);
}
