// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/DataSources/EarthquakeDataSource.h"
#include "Core/Models/Region.h"

#include <QPromise>

#include <memory>
#include <stdexcept>

/// A catalogue that offers `rows`, or fails while `fails`. With `holdsAnswers` a fetch stays open until release(). With
/// `throws` there is no fetch at all.
class FakeDataSource : public EarthquakeDataSource
{
public:
    const Region &region() const override { return Region::canaryIslands(); }

    QFuture<QList<ParsedEarthquake>> fetchEarthquakes() override
    {
        ++fetches;
        if (throws)
            throw std::runtime_error("the source throws");
        open = std::make_shared<QPromise<QList<ParsedEarthquake>>>();
        open->start();
        auto future = open->future();
        if (!holdsAnswers)
            release();
        return future;
    }

    /// Answers the open fetch.
    void release()
    {
        const auto promise = std::exchange(open, nullptr);
        if (fails)
            promise->setException(std::make_exception_ptr(std::runtime_error("the source fails")));
        else
            promise->addResult(rows);
        promise->finish();
    }

    QList<ParsedEarthquake> rows;
    bool fails = false;
    bool holdsAnswers = false;
    bool throws = false;
    /// How many fetches were begun.
    int fetches = 0;
    /// The fetch that is open, for a test that lets it outlive this or drops it.
    std::shared_ptr<QPromise<QList<ParsedEarthquake>>> open;
};
