// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Models/Region.h"

#include "Platform/Text/Localization.h"

const Region &Region::canaryIslands()
{
    static const Region region{
        QStringLiteral("canary_islands"),
        localized("region.canaryIslands", QStringLiteral("Islas Canarias")),
        QUrl(QStringLiteral("https://www.ign.es/web/vlc-ultimo-terremoto/-/orvalia/get10dias"), QUrl::StrictMode),
        {28.3, -15.8},
        {8.0, 10.0},
        QLocale(QLocale::Spanish, QLocale::Spain),
    };
    return region;
}
