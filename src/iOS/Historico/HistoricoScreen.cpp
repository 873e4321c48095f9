// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Historico/HistoricoScreen.h"

#include "Platform/NotificationCenter/NotificationCenter.h"

#include <numeric>
#include <utility>

HistoricoScreen::HistoricoScreen(QObject *parent)
    : QObject(parent)
{
    // A load is one uninterrupted run: its beginning and its end are drawn, not the steps between them.
    connect(&m_viewModel, &HistoricoViewModel::isLoadingChanged, this, &HistoricoScreen::redraw);
    for (const auto signal : {&HistoricoViewModel::loadedEarthquakesChanged, &HistoricoViewModel::totalCountChanged,
                              &HistoricoViewModel::filterModeChanged, &HistoricoViewModel::debouncedSearchTextChanged})
        connect(&m_viewModel, signal, this, &HistoricoScreen::redrawLater);
    connect(&m_viewModel, &HistoricoViewModel::searchTextChanged, this, &HistoricoScreen::searchTextChanged);
    connect(&NotificationCenter::defaultCenter(), &NotificationCenter::posted, this, &HistoricoScreen::answerMenu);
}

void HistoricoScreen::redrawLater()
{
    if (std::exchange(m_isRedrawDue, true))
        return;
    const auto redrawIfDue = [this] {
        if (m_isRedrawDue)
            redraw();
    };
    QMetaObject::invokeMethod(this, redrawIfDue, Qt::QueuedConnection);
}

void HistoricoScreen::redraw()
{
    m_isRedrawDue = false;
    if (m_viewModel.loadedEarthquakes().empty())
        m_filling = isLoading() ? Filling::Loading : Filling::Empty;
    else
        m_filling = Filling::List;
    if (!isLoading()) {
        m_hasMore = m_viewModel.hasMore();
        showRows();
    }
    Q_EMIT redrawn();
}

void HistoricoScreen::showRows()
{
    std::vector<Earthquake> events;
    events.reserve(m_viewModel.loadedEarthquakes().size());
    std::vector<EarthquakeSectionModel::Section> sections;
    for (const HistoricoViewModel::HistoricoSection &section : m_viewModel.sections()) {
        events.insert(events.end(), section.items.begin(), section.items.end());
        sections.push_back({section.id, qsizetype(section.items.size())});
    }
    std::vector<quint32> places(events.size());
    std::iota(places.begin(), places.end(), 0);
    m_rows.show(events, places, sections);
}

void HistoricoScreen::answerMenu(const QString &notification)
{
    if (!m_isActive)
        return;
    if (notification == NotificationName::focusSearch)
        setSearchPresented(true);
    if (notification == NotificationName::openFilter)
        setProperty("showFilterSheet", true);
}

bool HistoricoScreen::hasFilter() const
{
    return !std::holds_alternative<HistoricoViewModel::None>(m_viewModel.filterMode());
}

void HistoricoScreen::setSearchPresented(bool isPresented)
{
    if (isPresented == m_isSearchPresented)
        return;
    m_isSearchPresented = isPresented;
    if (!isPresented)
        m_viewModel.setSearchText(QString());
    Q_EMIT searchPresentedChanged();
}

void HistoricoScreen::appear()
{
    m_viewModel.onAppear(m_container->mainContext());
    m_viewModel.loadAvailableYears(m_container->mainContext());
    m_isActive = true;
}

void HistoricoScreen::disappear()
{
    m_isActive = false;
}

void HistoricoScreen::loadMore()
{
    QMetaObject::invokeMethod(&m_viewModel, &HistoricoViewModel::loadMore, Qt::QueuedConnection);
}
