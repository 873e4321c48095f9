// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/MagnitudeCategory.h"
#include "Platform/Map/CoordinateRegion.h"
#include "Platform/Support/Instant.h"

#include <QExplicitlySharedDataPointer>
#include <QString>

#include <optional>

class EarthquakeRecord;

/// Identity of an event: positive and permanent for a stored row, negative and good for this process before that. An
/// event that a fetch gave out before it was saved keeps its negative one until the process ends, so that no screen
/// sees an event change its identity.
using PersistentIdentifier = qint64;

/// One stored event: a handle of one pointer to a record that never changes. Copies are cheap and mean the same
/// event. Two are equal when they have the same persistent identifier; their values take no part in it. Main thread
/// only. There is no empty handle: where an event may be absent, std::optional says so.
class Earthquake
{
public:
    /// A new event, not yet stored, with a temporary identifier of its own. `fetchedAt` is the moment at which it
    /// enters the store: the present one when none is given. Nothing is checked.
    Earthquake(const QString &eventID, Instant date, double latitude, double longitude, double depth, double magnitude,
               const QString &magnitudeType, const std::optional<QString> &maxIntensity, const QString &location,
               std::optional<Instant> fetchedAt = std::nullopt);
    Earthquake(const Earthquake &);
    Earthquake(Earthquake &&) noexcept;
    Earthquake &operator=(const Earthquake &);
    Earthquake &operator=(Earthquake &&) noexcept;
    ~Earthquake();

    PersistentIdentifier id() const;
    /// The institute's event number.
    QString eventID() const;
    /// Origin time.
    Instant date() const;
    /// Decimal degrees.
    double latitude() const;
    /// Decimal degrees, negative to the west.
    double longitude() const;
    /// Kilometres; negative above sea level.
    double depth() const;
    double magnitude() const;
    /// The page's label of the magnitude scale, "—" where it gave none.
    QString magnitudeType() const;
    /// Highest reported intensity; absent when none was reported.
    std::optional<QString> maxIntensity() const;
    /// Place name as the page wrote it; may be empty. Text from outside: always shown as plain text.
    QString location() const;
    /// The number of the place name in InternedTexts::placeNames(): the same for the same name.
    quint32 locationIndex() const;
    /// When this row first entered the store.
    Instant fetchedAt() const;

    Coordinate coordinate() const { return {latitude(), longitude()}; }
    MagnitudeCategory magnitudeCategory() const { return MagnitudeCategory::from(magnitude()); }

    /// Whether both are the very same record, so that every value is equal as well.
    bool isSameRecord(const Earthquake &other) const { return m_record == other.m_record; }

    friend bool operator==(const Earthquake &a, const Earthquake &b) { return a.id() == b.id(); }
    friend size_t qHash(const Earthquake &earthquake, size_t seed = 0) { return ::qHash(earthquake.id(), seed); }

private:
    friend class ModelContext;
    explicit Earthquake(EarthquakeRecord *record);

    QExplicitlySharedDataPointer<EarthquakeRecord> m_record;
};
