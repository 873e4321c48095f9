// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/Earthquake.h"
#include "Platform/Text/DateFormatter.h"
#include "iOS/Shared/EarthquakeReference.h"

#include <QAbstractListModel>
#include <QStringList>
#include <QtQmlIntegration>

#include <span>
#include <vector>

/// Events in sections, as lists show them. It tells only what changed from one show() to the next, never a reset, so
/// that a view keeps its place, its current row and the focus. A row is known again by the event's identity. It also
/// remembers the chosen row, which stays with its event as rows come and go.
class EarthquakeSectionModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS
    /// The chosen row; -1 when there is none.
    Q_PROPERTY(int currentRow READ currentRow WRITE setCurrentRow NOTIFY currentRowChanged)

public:
    enum Role {
        magnitudeRole = Qt::UserRole,
        locationRole,
        dateTextRole, ///< in the user's locale and zone
        depthTextRole,
        sectionRole, ///< id of the section
        sentenceRole, ///< the whole row as one sentence, for a screen reader
    };

    /// A run of rows under one header.
    struct Section
    {
        QString id;
        /// How many rows it has.
        qsizetype count = 0;
    };

    explicit EarthquakeSectionModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    const Earthquake &at(qsizetype row) const { return m_rows[size_t(row)].earthquake; }
    /// The event of a row, to open it.
    Q_INVOKABLE EarthquakeReference reference(int row) const { return {at(row)}; }
    /// The row of an event; -1 when it is not shown.
    qsizetype rowOf(PersistentIdentifier id) const;
    int currentRow() const { return m_currentRow; }
    /// The nearest row that there is; below the first one, none.
    void setCurrentRow(int row);

    /// Shows those of `events` whose indexes are in `places`, in this order, which should be newest first: where it is
    /// not, more rows than need be go and come again. `sections` cover them all, in order. Costs one walk over both
    /// lists. The chosen row goes where its event goes; when that is gone, the row in its place is chosen.
    void show(std::span<const Earthquake> events, std::span<const quint32> places,
              const std::vector<Section> &sections);

Q_SIGNALS:
    void currentRowChanged();

private:
    struct Row
    {
        Earthquake earthquake;
        /// Index into m_sectionIds.
        quint32 section;
    };
    /// Rows [oldBegin, oldEnd) give way to [newBegin, newEnd).
    struct Edit
    {
        qsizetype oldBegin;
        qsizetype oldEnd;
        qsizetype newBegin;
        qsizetype newEnd;
    };
    class Shown;

    std::vector<Edit> editsTowards(const Shown &shown) const;
    void apply(const std::vector<Edit> &edits, const Shown &shown);
    void replaceChangedRows(const Shown &shown);
    void chooseAgain(int row, PersistentIdentifier id);
    quint32 numberOfSection(const QString &id);
    QString sentence(const Earthquake &earthquake) const;

    std::vector<Row> m_rows;
    /// Every section that was ever shown.
    QStringList m_sectionIds;
    DateFormatter m_dates;
    int m_currentRow = -1;
};
