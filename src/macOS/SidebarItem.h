// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QMetaType>
#include <QString>

#include <array>
#include <optional>

/// A section of the main window.
class SidebarItem
{
    Q_GADGET

public:
    enum Case : quint8 { sismos, historico, mapa, stats };
    Q_ENUM(Case)

    constexpr SidebarItem(Case item = sismos)
        : m_item(item)
    {
    }

    /// In the order of the sidebar.
    static const std::array<SidebarItem, 4> allCases;

    /// The item whose rawValue() is exactly this text.
    static std::optional<SidebarItem> fromRawValue(QStringView rawValue);

    constexpr Case item() const { return m_item; }
    QString rawValue() const;
    QString id() const { return rawValue(); }
    QString label() const;
    /// Name in the icon family.
    QString icon() const;

    constexpr bool operator==(const SidebarItem &) const = default;

private:
    Case m_item;
};

inline constexpr std::array<SidebarItem, 4> SidebarItem::allCases = {sismos, historico, mapa, stats};
