// SPDX-License-Identifier: GPL-3.0-or-later
#include "macOS/SidebarModel.h"

#include "macOS/SidebarItem.h"

#include <algorithm>

int SidebarModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(SidebarItem::allCases.size());
}

QVariant SidebarModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const SidebarItem item = SidebarItem::allCases.at(size_t(index.row()));
    switch (role) {
    case idRole:
        return item.id();
    case labelRole:
        return item.label();
    case iconRole:
        return item.icon();
    default:
        return {};
    }
}

QHash<int, QByteArray> SidebarModel::roleNames() const
{
    return {{idRole, "itemId"}, {labelRole, "label"}, {iconRole, "iconName"}};
}

int SidebarModel::rowOf(const QString &id) const
{
    const std::optional<SidebarItem> item = SidebarItem::fromRawValue(id);
    return item ? int(std::ranges::find(SidebarItem::allCases, *item) - SidebarItem::allCases.begin()) : -1;
}

QString SidebarModel::idAt(int row) const
{
    return SidebarItem::allCases.at(size_t(row)).id();
}
