// SPDX-License-Identifier: GPL-3.0-or-later
#include "macOS/SidebarItem.h"

#include "Platform/Text/Localization.h"

std::optional<SidebarItem> SidebarItem::fromRawValue(QStringView rawValue)
{
    for (const SidebarItem item : allCases)
        if (item.rawValue() == rawValue)
            return item;
    return std::nullopt;
}

QString SidebarItem::rawValue() const
{
    switch (m_item) {
    case sismos:
        return QStringLiteral("sismos");
    case historico:
        return QStringLiteral("historico");
    case mapa:
        return QStringLiteral("mapa");
    case stats:
        return QStringLiteral("stats");
    }
    Q_UNREACHABLE();
}

QString SidebarItem::label() const
{
    switch (m_item) {
    case sismos:
        return localized("tab.sismos", QStringLiteral("Sismos"));
    case historico:
        return localized("tab.historico", QStringLiteral("Histórico"));
    case mapa:
        return localized("tab.mapa", QStringLiteral("Mapa"));
    case stats:
        return localized("tab.stats", QStringLiteral("Estadísticas"));
    }
    Q_UNREACHABLE();
}

QString SidebarItem::icon() const
{
    switch (m_item) {
    case sismos:
        return QStringLiteral("list.bullet.rectangle");
    case historico:
        return QStringLiteral("tray.full");
    case mapa:
        return QStringLiteral("map");
    case stats:
        return QStringLiteral("chart.bar.xaxis");
    }
    Q_UNREACHABLE();
}
