// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Support/Published.h"
#include "macOS/SidebarItem.h"

#include <QObject>
#include <QtQmlIntegration>

#include <optional>

class QJSEngine;
class QQmlEngine;

/// Which section is on show: the sidebar and the menu write the same value. Not saved, so that each start opens on
/// the recent list.
class NavigationState : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// Id of the selected item; empty when there is none.
    Q_PROPERTY(QString selectedId READ selectedId NOTIFY sidebarSelectionChanged)

public:
    /// The instance that every window uses.
    static NavigationState &shared();
    static NavigationState *create(QQmlEngine *, QJSEngine *);

    /// Absent when the user has cleared the selection.
    std::optional<SidebarItem> sidebarSelection() const { return m_sidebarSelection; }
    void setSidebarSelection(std::optional<SidebarItem> item) { m_sidebarSelection = item; }

    QString selectedId() const { return m_sidebarSelection.value() ? m_sidebarSelection.value()->id() : QString(); }
    /// Selects an item by its id; an unknown one changes nothing.
    Q_INVOKABLE void select(const QString &id);
    Q_INVOKABLE void clear() { setSidebarSelection(std::nullopt); }

Q_SIGNALS:
    void sidebarSelectionChanged();

private:
    NavigationState() = default;

    Published<std::optional<SidebarItem>> m_sidebarSelection{this, &NavigationState::sidebarSelectionChanged,
                                                             SidebarItem::sismos};
};
