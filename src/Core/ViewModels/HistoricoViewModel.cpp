// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/ViewModels/HistoricoViewModel.h"

#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"
#include "Platform/Support/Platform.h"
#include "Platform/Text/Localization.h"
#include "Platform/Text/TextSearch.h"
#include "Platform/Text/UserCalendar.h"

#include <algorithm>
#include <unordered_map>

using namespace std::chrono_literals;

namespace {
constexpr auto searchRest = 300ms;

/// Whether a place name holds a needle, asked once for each distinct name.
class LocationSearch
{
public:
    explicit LocationSearch(const QString &needle)
        : m_needle(foldedForSearch(needle))
    {
    }

    bool matches(const Earthquake &earthquake)
    {
        const auto [answer, isNew] = m_answers.try_emplace(earthquake.locationIndex(), false);
        if (isNew)
            answer->second = foldedContains(foldedForSearch(earthquake.location()), m_needle);
        return answer->second;
    }

private:
    QByteArray m_needle;
    std::unordered_map<quint32, bool> m_answers;
};

/// The calendar month that holds a date; where the calendar has no such month, the date alone.
DateRange monthOf(Instant date)
{
    const int year = UserCalendar::year(date);
    const int month = UserCalendar::month(date);
    const auto start = UserCalendar::startOfMonth(year, month);
    const auto end = UserCalendar::startOfNextMonth(year, month);
    return start && end ? DateRange{.from = start, .before = end} : DateRange{.from = date, .through = date};
}
}

HistoricoViewModel::HistoricoViewModel(QObject *parent)
    : QObject(parent)
    , m_searchDebounce(Platform::current().clock, searchRest,
                       [this](const QString &text) { m_debouncedSearchText = text; })
{
    m_searchDebounce.push(m_searchText);
}

void HistoricoViewModel::setSearchText(const QString &text)
{
    m_searchText = text;
    m_searchDebounce.push(text);
}

void HistoricoViewModel::onAppear(ModelContext &context)
{
    m_modelContext = &context;
    QMetaObject::invokeMethod(this, &HistoricoViewModel::loadInitial, Qt::QueuedConnection);
}

void HistoricoViewModel::loadInitial()
{
    if (!m_modelContext)
        return;
    m_loadedEarthquakes = {};
    m_totalCount = 0;
    m_isLoading = true;
    m_totalCount = fetchCount(*m_modelContext);
    m_loadedEarthquakes = fetchPage(*m_modelContext, 0);
    m_isLoading = false;
}

void HistoricoViewModel::loadMore()
{
    if (!m_modelContext || !hasMore() || m_isLoading)
        return;
    m_isLoading = true;
    std::vector<Earthquake> loaded = m_loadedEarthquakes;
    const std::vector<Earthquake> page = fetchPage(*m_modelContext, int(loaded.size()));
    loaded.insert(loaded.end(), page.begin(), page.end());
    m_loadedEarthquakes = std::move(loaded);
    m_isLoading = false;
}

void HistoricoViewModel::applyFilter(const DateFilterMode &mode)
{
    m_filterMode = mode;
    loadInitial();
}

void HistoricoViewModel::loadAvailableYears(ModelContext &context)
{
    std::vector<int> years;
    try {
        for (const Instant newest : context.newestDateOfEachYear())
            years.push_back(UserCalendar::year(newest));
    } catch (const StoreError &) {
        years.clear();
    }
    std::sort(years.begin(), years.end(), std::greater<>());
    years.erase(std::unique(years.begin(), years.end()), years.end());
    m_availableYears = std::move(years);
}

std::vector<HistoricoViewModel::HistoricoSection> HistoricoViewModel::sections() const
{
    const QString needle = trimmedOfBlanks(m_debouncedSearchText);
    LocationSearch search(needle);
    std::vector<HistoricoSection> sections;
    // Formatting every date would cost a frame; a run of one month needs it once.
    DateRange month{.from = Instant::max()};
    size_t current = 0;
    for (const Earthquake &earthquake : m_loadedEarthquakes.value()) {
        if (!needle.isEmpty() && !search.matches(earthquake))
            continue;
        if (!month.contains(earthquake.date())) {
            month = monthOf(earthquake.date());
            current = sectionIndex(sections, sectionKey(earthquake.date()));
        }
        sections[current].items.push_back(earthquake);
    }
    return sections;
}

std::optional<QString> HistoricoViewModel::navSubtitle() const
{
    if (m_loadedEarthquakes->empty())
        return std::nullopt;
    return formatted(localized("historico.subtitle", QStringLiteral("Data up to %@")),
                     {m_subtitleDateFormatter.string(m_loadedEarthquakes->front().date())});
}

qint64 HistoricoViewModel::fetchCount(const ModelContext &context) const
{
    try {
        return context.fetchCount({.dates = makePredicate()});
    } catch (const StoreError &) {
        return 0;
    }
}

std::vector<Earthquake> HistoricoViewModel::fetchPage(const ModelContext &context, int offset) const
{
    try {
        return context.fetch(makeDescriptor(offset));
    } catch (const StoreError &) {
        return {};
    }
}

FetchDescriptor HistoricoViewModel::makeDescriptor(int offset) const
{
    return {.dates = makePredicate(),
            .sort = FetchDescriptor::Sort::dateReverse,
            .fetchLimit = pageSize,
            .fetchOffset = offset};
}

DateRange HistoricoViewModel::makePredicate() const
{
    if (const auto *range = std::get_if<CustomRange>(&m_filterMode.value()))
        return {.from = range->start, .through = range->end};
    const auto *period = std::get_if<YearMonth>(&m_filterMode.value());
    if (!period)
        return {};
    const auto start = period->month ? UserCalendar::startOfMonth(period->year, *period->month)
                                     : UserCalendar::startOfYear(period->year);
    const auto end = period->month ? UserCalendar::startOfNextMonth(period->year, *period->month)
                                   : UserCalendar::startOfYear(period->year + 1);
    // A date that the calendar does not have filters nothing.
    return start && end ? DateRange{.from = start, .before = end} : DateRange{};
}

QString HistoricoViewModel::sectionKey(Instant date) const
{
    QString text = m_sectionFormatter.string(date);
    if (text.isEmpty())
        return text;
    const qsizetype first = text.at(0).isHighSurrogate() ? 2 : 1;
    return text.left(first).toUpper() + text.mid(first);
}

size_t HistoricoViewModel::sectionIndex(std::vector<HistoricoSection> &sections, const QString &key)
{
    const auto found = std::find_if(sections.begin(), sections.end(),
                                    [&key](const HistoricoSection &section) { return section.id == key; });
    if (found != sections.end())
        return size_t(found - sections.begin());
    sections.push_back({key, key, {}});
    return sections.size() - 1;
}
