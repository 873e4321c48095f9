// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/DataSources/EarthquakeDataSource.h"
#include "Core/Models/Region.h"

#include <QPromise>

#include <memory>
#include <stdexcept>

/// A catalogue that offers `rows`, or fails while `fails`. With `holdsAnswers` a fetch stays open until release().
class FakeDataSource : public EarthquakeDataSource
{
public:
    const Region &region() const override { return Region::canaryIslands(); }

    QFuture<QList<ParsedEarthquake>> fetchEarthquakes() override
    {
        ++fetches;
        m_open = std::make_shared<QPromise<QList<ParsedEarthquake>>>();
        m_open->start();
        const auto future = m_open->future();
        if (!holdsAnswers)
            release();
        return future;
    }

    /// Answers the open fetch.
    void release()
    {
        const auto promise = std::exchange(m_open, nullptr);
        if (fails)
            promise->setException(std::make_exception_ptr(std::runtime_error("the source fails")));
        else
            promise->addResult(rows);
        promise->finish();
    }

    QList<ParsedEarthquake> rows;
    bool fails = false;
    bool holdsAnswers = false;
    /// How many fetches were begun.
    int fetches = 0;

private:
    std::shared_ptr<QPromise<QList<ParsedEarthquake>>> m_open;
};
