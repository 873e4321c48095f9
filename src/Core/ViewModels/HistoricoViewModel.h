// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/Earthquake.h"
#include "Core/Persistence/FetchDescriptor.h"
#include "Platform/Support/Debounce.h"
#include "Platform/Support/Published.h"
#include "Platform/Text/DateFormatter.h"

#include <QObject>
#include <QString>

#include <optional>
#include <variant>
#include <vector>

class ModelContext;

/// Behind the history: pages through the whole store, newest first, under a date filter that goes into the store, and
/// searches what is loaded. It starts no refresh and watches no store: it reads at each appearance, at each filter,
/// and at the user's call for more.
class HistoricoViewModel : public QObject
{
    Q_OBJECT

public:
    /// A calendar month of the user's calendar, or a whole year when `month` (1 to 12) is absent.
    struct YearMonth
    {
        int year = 0;
        std::optional<int> month;

        bool operator==(const YearMonth &) const = default;
    };
    /// Both ends included, as they stand.
    struct CustomRange
    {
        Instant start;
        Instant end;

        bool operator==(const CustomRange &) const = default;
    };
    /// Every event passes.
    struct None
    {
        bool operator==(const None &) const = default;
    };
    using DateFilterMode = std::variant<None, YearMonth, CustomRange>;

    /// The events of one month.
    struct HistoricoSection
    {
        /// Month and year in words; also the title.
        QString id;
        QString title;
        /// Newest first.
        std::vector<Earthquake> items;
    };

    /// Events in a page.
    static constexpr int pageSize = 50;

    explicit HistoricoViewModel(QObject *parent = nullptr);

    /// The pages fetched so far, in order.
    const std::vector<Earthquake> &loadedEarthquakes() const { return m_loadedEarthquakes; }
    /// How many stored events passed the date filter when the first page was read; 0 after a failure.
    qint64 totalCount() const { return m_totalCount; }
    bool isLoading() const { return m_isLoading; }
    /// The years that have events, greatest first, whatever the filter.
    const std::vector<int> &availableYears() const { return m_availableYears; }
    const DateFilterMode &filterMode() const { return m_filterMode; }
    /// What the search field holds.
    QString searchText() const { return m_searchText; }
    /// The search in force: what the field held when it last stood still for 300 ms.
    QString debouncedSearchText() const { return m_debouncedSearchText; }

    bool hasMore() const { return qint64(m_loadedEarthquakes->size()) < m_totalCount.value(); }
    /// The loaded events that pass the search, by month, in order of first appearance.
    std::vector<HistoricoSection> sections() const;
    /// Names the newest loaded event; absent when nothing is loaded.
    std::optional<QString> navSubtitle() const;

    void setSearchText(const QString &text);

    /// Takes the context, which must outlive the model, and posts the first load.
    void onAppear(ModelContext &context);
    /// Reads the years anew.
    void loadAvailableYears(ModelContext &context);
    /// Drops what is loaded and reads the first page. Nothing happens before onAppear().
    void loadInitial();
    /// Reads the next page; nothing happens without one or while another load is under way.
    void loadMore();
    /// Puts a date filter in force and reads the first page, also when it was in force already.
    void applyFilter(const DateFilterMode &mode);

Q_SIGNALS:
    void loadedEarthquakesChanged();
    void totalCountChanged();
    void isLoadingChanged();
    void availableYearsChanged();
    void filterModeChanged();
    void searchTextChanged();
    void debouncedSearchTextChanged();

private:
    qint64 fetchCount(const ModelContext &context) const;
    std::vector<Earthquake> fetchPage(const ModelContext &context, int offset) const;
    FetchDescriptor makeDescriptor(int offset) const;
    DateRange makePredicate() const;
    QString sectionKey(Instant date) const;
    static size_t sectionIndex(std::vector<HistoricoSection> &sections, const QString &key);

    ModelContext *m_modelContext = nullptr;
    DateFormatter m_subtitleDateFormatter{DateFormatter::Form::pattern, QStringLiteral("d MMM yyyy")};
    DateFormatter m_sectionFormatter{DateFormatter::Form::pattern, QStringLiteral("MMMM yyyy")};

    Published<std::vector<Earthquake>> m_loadedEarthquakes{this, &HistoricoViewModel::loadedEarthquakesChanged};
    Published<qint64> m_totalCount{this, &HistoricoViewModel::totalCountChanged, 0};
    Published<bool> m_isLoading{this, &HistoricoViewModel::isLoadingChanged, false};
    Published<std::vector<int>> m_availableYears{this, &HistoricoViewModel::availableYearsChanged};
    Published<DateFilterMode> m_filterMode{this, &HistoricoViewModel::filterModeChanged};
    Published<QString> m_searchText{this, &HistoricoViewModel::searchTextChanged};
    Published<QString> m_debouncedSearchText{this, &HistoricoViewModel::debouncedSearchTextChanged};
    Debounce m_searchDebounce;
};
