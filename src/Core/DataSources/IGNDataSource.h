// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/DataSources/EarthquakeDataSource.h"
#include "Core/Networking/HTMLParser.h"

/// The public page of the Instituto Geográfico Nacional that lists the last ten days round the Canary Islands.
class IGNDataSource : public EarthquakeDataSource
{
public:
    /// Fetches by `session`, which must outlive the source and every fetch under way.
    explicit IGNDataSource(URLSession &session = URLSession::shared());

    const Region &region() const override;
    QFuture<QList<ParsedEarthquake>> fetchEarthquakes() override;

private:
    HTMLParser m_parser;
};
