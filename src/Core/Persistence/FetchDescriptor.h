// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Support/Instant.h"

#include <optional>

/// Which dates a fetch wants. An absent bound does not bound.
struct DateRange
{
    std::optional<Instant> from{}; ///< included
    std::optional<Instant> before{}; ///< excluded
    std::optional<Instant> through{}; ///< included

    bool contains(Instant date) const
    {
        return (!from || date >= *from) && (!before || date < *before) && (!through || date <= *through);
    }
};

/// What to read from the store.
struct FetchDescriptor
{
    enum class Sort {
        none, ///< in the order in which the rows came
        dateReverse, ///< newest first; of the same date the later row first
    };

    DateRange dates{};
    Sort sort = Sort::none;
    /// At most this many; all when absent.
    std::optional<int> fetchLimit{};
    /// Left out at the beginning.
    int fetchOffset = 0;
};
