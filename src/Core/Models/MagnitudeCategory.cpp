// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Models/MagnitudeCategory.h"

#include "Platform/Text/Localization.h"

std::optional<MagnitudeCategory> MagnitudeCategory::fromRawValue(QStringView rawValue)
{
    for (const MagnitudeCategory category : allCases)
        if (category.rawValue() == rawValue)
            return category;
    return std::nullopt;
}

QString MagnitudeCategory::rawValue() const
{
    switch (m_band) {
    case micro:
        return QStringLiteral("micro");
    case low:
        return QStringLiteral("low");
    case moderate:
        return QStringLiteral("moderate");
    case strong:
        return QStringLiteral("strong");
    case major:
        return QStringLiteral("major");
    }
    Q_UNREACHABLE();
}

QString MagnitudeCategory::label() const
{
    switch (m_band) {
    case micro:
        return localized("magnitude.category.micro", QStringLiteral("Micro"));
    case low:
        return localized("magnitude.category.low", QStringLiteral("Leve"));
    case moderate:
        return localized("magnitude.category.moderate", QStringLiteral("Moderado"));
    case strong:
        return localized("magnitude.category.strong", QStringLiteral("Fuerte"));
    case major:
        return localized("magnitude.category.major", QStringLiteral("Muy Fuerte"));
    }
    Q_UNREACHABLE();
}

QString MagnitudeCategory::description() const
{
    switch (m_band) {
    case micro:
        return localized("magnitude.category.micro.description",
                         QStringLiteral("Imperceptible para la mayoría de personas. Detectado únicamente por "
                                        "instrumentos sísmicos."));
    case low:
        return localized("magnitude.category.low.description",
                         QStringLiteral("Habitualmente imperceptible o sentido como una ligera vibración. No causan "
                                        "daños."));
    case moderate:
        return localized("magnitude.category.moderate.description",
                         QStringLiteral("Se siente como un movimiento claro de suelos y paredes. Raramente causan "
                                        "daños, pero pueden ser aterradores."));
    case strong:
        return localized("magnitude.category.strong.description",
                         QStringLiteral("Puede romper ventanas, hacer caer objetos y dañar edificios antiguos. Es "
                                        "necesario tener precaución."));
    case major:
        return localized("magnitude.category.major.description",
                         QStringLiteral("Puede causar destrucción significativa. Sigue las recomendaciones de "
                                        "seguridad, busca un lugar seguro y mantente alerta."));
    }
    Q_UNREACHABLE();
}

QString MagnitudeCategory::range() const
{
    switch (m_band) {
    case micro:
        return QStringLiteral("< 2.0");
    case low:
        return QStringLiteral("2.0 – 3.9");
    case moderate:
        return QStringLiteral("4.0 – 5.9");
    case strong:
        return QStringLiteral("6.0 – 6.9");
    case major:
        return QStringLiteral("≥ 7.0");
    }
    Q_UNREACHABLE();
}

QColor MagnitudeCategory::color() const
{
    switch (m_band) {
    case micro:
        return QColor::fromRgbF(1.0F, 0.97F, 0.65F);
    case low:
        return QColor::fromRgbF(1.0F, 0.85F, 0.0F);
    case moderate:
        return QColor::fromRgbF(1.0F, 0.6F, 0.0F);
    case strong:
        return QColor::fromRgbF(0.9F, 0.35F, 0.0F);
    case major:
        return QColor(0xff, 0x3b, 0x30);
    }
    Q_UNREACHABLE();
}

double MagnitudeCategory::minimumMagnitude() const
{
    switch (m_band) {
    case micro:
        return 0.0;
    case low:
        return 2.0;
    case moderate:
        return 4.0;
    case strong:
        return 6.0;
    case major:
        return 7.0;
    }
    Q_UNREACHABLE();
}
