// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/DataSources/IGNDataSource.h"

#include "Core/Models/Region.h"

IGNDataSource::IGNDataSource(URLSession &session)
    : m_parser(session)
{
}

const Region &IGNDataSource::region() const
{
    return Region::canaryIslands();
}

QFuture<QList<ParsedEarthquake>> IGNDataSource::fetchEarthquakes()
{
    return m_parser.fetchAndParse(region().dataSourceURL);
}
