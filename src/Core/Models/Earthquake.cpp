// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Models/Earthquake.h"

#include "Core/Models/EarthquakeRecord.h"
#include "Core/Models/InternedTexts.h"
#include "Platform/Clock/Clock.h"
#include "Platform/Support/Platform.h"

namespace {
PersistentIdentifier nextTemporaryIdentifier()
{
    static PersistentIdentifier last = 0;
    return --last;
}
}

Earthquake::Earthquake(const QString &eventID, Instant date, double latitude, double longitude, double depth,
                       double magnitude, const QString &magnitudeType, const std::optional<QString> &maxIntensity,
                       const QString &location, std::optional<Instant> fetchedAt)
    : m_record(new EarthquakeRecord)
{
    m_record->id = nextTemporaryIdentifier();
    m_record->date = date;
    m_record->fetchedAt = fetchedAt ? *fetchedAt : Platform::current().clock.now();
    m_record->latitude = latitude;
    m_record->longitude = longitude;
    m_record->depth = depth;
    m_record->magnitude = magnitude;
    m_record->eventID = eventID.toStdString();
    m_record->magnitudeTypeIndex = InternedTexts::labels().indexOf(magnitudeType.toStdString());
    if (maxIntensity)
        m_record->maxIntensityIndex = InternedTexts::labels().indexOf(maxIntensity->toStdString());
    m_record->locationIndex = InternedTexts::placeNames().indexOf(location.toStdString());
}

Earthquake::Earthquake(EarthquakeRecord *record)
    : m_record(record)
{
}

Earthquake::Earthquake(const Earthquake &) = default;
Earthquake::Earthquake(Earthquake &&) noexcept = default;
Earthquake &Earthquake::operator=(const Earthquake &) = default;
Earthquake &Earthquake::operator=(Earthquake &&) noexcept = default;
Earthquake::~Earthquake() = default;

PersistentIdentifier Earthquake::id() const
{
    return m_record->id;
}

QString Earthquake::eventID() const
{
    return QString::fromStdString(m_record->eventID);
}

Instant Earthquake::date() const
{
    return m_record->date;
}

double Earthquake::latitude() const
{
    return m_record->latitude;
}

double Earthquake::longitude() const
{
    return m_record->longitude;
}

double Earthquake::depth() const
{
    return m_record->depth;
}

double Earthquake::magnitude() const
{
    return m_record->magnitude;
}

QString Earthquake::magnitudeType() const
{
    return InternedTexts::labels().text(m_record->magnitudeTypeIndex);
}

std::optional<QString> Earthquake::maxIntensity() const
{
    if (m_record->maxIntensityIndex == EarthquakeRecord::noIntensity)
        return std::nullopt;
    return InternedTexts::labels().text(m_record->maxIntensityIndex);
}

QString Earthquake::location() const
{
    return InternedTexts::placeNames().text(m_record->locationIndex);
}

quint32 Earthquake::locationIndex() const
{
    return m_record->locationIndex;
}

Instant Earthquake::fetchedAt() const
{
    return m_record->fetchedAt;
}
