// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Support/Instant.h"

#include <QAbstractListModel>
#include <QDateTime>
#include <QStringList>
#include <QtQmlIntegration>

#include <vector>

/// The days of one month as a calendar shows them: whole weeks, from the locale's first day of the week, in the user's
/// calendar and zone. The day under the keyboard's cursor says which month.
class CalendarModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    /// The moment that is chosen; its day is marked.
    Q_PROPERTY(QDateTime selected READ selected WRITE setSelected NOTIFY selectedChanged)
    /// The earliest and latest moments that may be chosen, to the day; invalid for no bound.
    Q_PROPERTY(QDateTime minimum READ minimum WRITE setMinimum NOTIFY boundsChanged)
    Q_PROPERTY(QDateTime maximum READ maximum WRITE setMaximum NOTIFY boundsChanged)
    /// Such as "19 sept 2021".
    Q_PROPERTY(QString selectedText READ selectedText NOTIFY selectedChanged)
    /// The same day as it may be typed, such as "19/9/2021".
    Q_PROPERTY(QString typedExample READ typedExample NOTIFY selectedChanged)
    /// Such as "Septiembre 2021".
    Q_PROPERTY(QString title READ title NOTIFY monthChanged)
    /// Two letters each, the locale's first day of the week first.
    Q_PROPERTY(QStringList weekdays READ weekdays CONSTANT)
    /// Row of the day under the cursor.
    Q_PROPERTY(int cursorRow READ cursorRow NOTIFY cursorChanged)

public:
    enum Role { TextRole = Qt::UserRole, NameRole, InMonthRole, EnabledRole, TodayRole, SelectedRole };

    explicit CalendarModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    QDateTime selected() const;
    QDateTime minimum() const { return m_minimum; }
    QDateTime maximum() const { return m_maximum; }
    QString selectedText() const;
    QString typedExample() const;
    QString title() const;
    QStringList weekdays() const;
    int cursorRow() const;
    void setSelected(const QDateTime &selected);
    void setMinimum(const QDateTime &minimum);
    void setMaximum(const QDateTime &maximum);

    /// Puts the cursor on the chosen day.
    Q_INVOKABLE void showSelected();
    /// Move the cursor, never out of bounds.
    Q_INVOKABLE void moveByDays(int days);
    Q_INVOKABLE void moveByMonths(int months);
    Q_INVOKABLE void moveToWeekStart();
    Q_INVOKABLE void moveToWeekEnd();

    /// The moment to choose for the day of a row: at the time of day of the chosen moment, or the bound that it would
    /// pass. Invalid for a day out of bounds.
    Q_INVOKABLE QDateTime moment(int row) const;
    /// The same for a typed text; invalid when it is no day or one out of bounds.
    Q_INVOKABLE QDateTime momentOf(const QString &typed) const;
    /// A typed day may begin so: with a digit of any script.
    Q_INVOKABLE bool isDigit(const QString &typed) const;

Q_SIGNALS:
    void selectedChanged();
    void boundsChanged();
    void monthChanged();
    void cursorChanged();

private:
    bool isWithinBounds(Instant day) const;
    QDateTime momentOfDay(Instant day) const;
    void moveTo(Instant day);
    void layOut();
    void redraw();

    Instant m_selected;
    QDateTime m_minimum;
    QDateTime m_maximum;
    Instant m_cursor;
    Instant m_month;
    std::vector<Instant> m_days;
};
