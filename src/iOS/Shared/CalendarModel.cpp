// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/CalendarModel.h"

#include "Platform/Clock/Clock.h"
#include "Platform/Support/Platform.h"
#include "Platform/Text/DateFormatter.h"
#include "Platform/Text/UserCalendar.h"
#include "iOS/Shared/CalendarDays.h"
#include "iOS/Shared/InstantDate.h"

#include <algorithm>

namespace {
QString withPattern(const char16_t *pattern, Instant instant)
{
    return DateFormatter(DateFormatter::Form::pattern, QString::fromUtf16(pattern)).string(instant);
}

QString withSkeleton(const char16_t *skeleton, Instant instant)
{
    return DateFormatter(DateFormatter::Form::skeleton, QString::fromUtf16(skeleton)).string(instant);
}
}

CalendarModel::CalendarModel(QObject *parent)
    : QAbstractListModel(parent)
    , m_selected(Platform::current().clock.now())
{
    m_cursor = UserCalendar::startOfDay(m_selected);
    layOut();
}

int CalendarModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_days.size());
}

QVariant CalendarModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Instant day = m_days[size_t(index.row())];
    switch (role) {
    case TextRole:
        return withPattern(u"d", day);
    case NameRole:
        return withSkeleton(u"yMMMMEEEEd", day);
    case InMonthRole:
        return day >= m_month && day < CalendarDays::startOfMonth(m_month, 1);
    case EnabledRole:
        return isWithinBounds(day);
    case TodayRole:
        return day == UserCalendar::startOfDay(Platform::current().clock.now());
    case SelectedRole:
        return day == UserCalendar::startOfDay(m_selected);
    default:
        return {};
    }
}

QHash<int, QByteArray> CalendarModel::roleNames() const
{
    return {{TextRole, "text"},   {NameRole, "name"},      {InMonthRole, "inMonth"}, {EnabledRole, "withinBounds"},
            {TodayRole, "today"}, {SelectedRole, "chosen"}};
}

QDateTime CalendarModel::selected() const
{
    return dateOf(m_selected);
}

QString CalendarModel::selectedText() const
{
    return withSkeleton(u"yMMMd", m_selected);
}

QString CalendarModel::typedExample() const
{
    return withSkeleton(u"yMd", m_selected);
}

QString CalendarModel::title() const
{
    QString text = withPattern(u"LLLL y", m_month);
    return text.replace(0, 1, text.left(1).toUpper());
}

QStringList CalendarModel::weekdays() const
{
    QStringList names;
    for (int row = 0; row < 7; ++row)
        names.append(withPattern(u"cccccc", m_days[size_t(row)]));
    return names;
}

int CalendarModel::cursorRow() const
{
    const auto found = std::find(m_days.begin(), m_days.end(), m_cursor);
    return int(found - m_days.begin());
}

void CalendarModel::setSelected(const QDateTime &selected)
{
    if (!selected.isValid() || m_selected == instantOf(selected))
        return;
    m_selected = instantOf(selected);
    redraw();
    Q_EMIT selectedChanged();
}

void CalendarModel::setMinimum(const QDateTime &minimum)
{
    if (m_minimum == minimum)
        return;
    m_minimum = minimum;
    redraw();
    Q_EMIT boundsChanged();
}

void CalendarModel::setMaximum(const QDateTime &maximum)
{
    if (m_maximum == maximum)
        return;
    m_maximum = maximum;
    redraw();
    Q_EMIT boundsChanged();
}

void CalendarModel::showSelected()
{
    // Wherever the bounds lie: this is what is chosen.
    m_cursor = UserCalendar::startOfDay(m_selected);
    layOut();
}

void CalendarModel::moveByDays(int days)
{
    moveTo(CalendarDays::moved(m_cursor, days));
}

void CalendarModel::moveByMonths(int months)
{
    moveTo(CalendarDays::movedByMonths(m_cursor, months));
}

void CalendarModel::moveToWeekStart()
{
    moveTo(CalendarDays::moved(m_cursor, -CalendarDays::placeInWeek(m_cursor)));
}

void CalendarModel::moveToWeekEnd()
{
    moveTo(CalendarDays::moved(m_cursor, 6 - CalendarDays::placeInWeek(m_cursor)));
}

QDateTime CalendarModel::moment(int row) const
{
    return row >= 0 && row < rowCount() ? momentOfDay(m_days[size_t(row)]) : QDateTime();
}

QDateTime CalendarModel::momentOf(const QString &typed) const
{
    const auto day = CalendarDays::parsed(typed);
    return day ? momentOfDay(*day) : QDateTime();
}

bool CalendarModel::isDigit(const QString &typed) const
{
    return !typed.isEmpty() && typed.front().digitValue() >= 0;
}

bool CalendarModel::isWithinBounds(Instant day) const
{
    return (!m_minimum.isValid() || day >= UserCalendar::startOfDay(instantOf(m_minimum)))
        && (!m_maximum.isValid() || day <= instantOf(m_maximum));
}

QDateTime CalendarModel::momentOfDay(Instant day) const
{
    if (!isWithinBounds(day))
        return {};
    Instant moment = UserCalendar::atTimeOfDay(day, m_selected);
    if (m_minimum.isValid())
        moment = std::max(moment, instantOf(m_minimum));
    if (m_maximum.isValid())
        moment = std::min(moment, instantOf(m_maximum));
    return dateOf(moment);
}

void CalendarModel::moveTo(Instant day)
{
    if (m_minimum.isValid())
        day = std::max(day, UserCalendar::startOfDay(instantOf(m_minimum)));
    if (m_maximum.isValid())
        day = std::min(day, UserCalendar::startOfDay(instantOf(m_maximum)));
    m_cursor = day;
    if (CalendarDays::startOfMonth(day) == m_month) {
        Q_EMIT cursorChanged();
        return;
    }
    layOut();
}

void CalendarModel::layOut()
{
    beginResetModel();
    m_month = CalendarDays::startOfMonth(m_cursor);
    const Instant beyond = CalendarDays::startOfMonth(m_month, 1);
    m_days.clear();
    Instant day = CalendarDays::moved(m_month, -CalendarDays::placeInWeek(m_month));
    while (day < beyond || m_days.size() % 7 != 0) {
        m_days.push_back(day);
        day = CalendarDays::moved(day, 1);
    }
    endResetModel();
    Q_EMIT monthChanged();
    Q_EMIT cursorChanged();
}

void CalendarModel::redraw()
{
    Q_EMIT dataChanged(index(0), index(rowCount() - 1));
}
