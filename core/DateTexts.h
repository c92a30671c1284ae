// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/LookupCache.h"

#include <ctime>

namespace MWCore {

/// Formats many times as mfs_date_string_from_time_t() does, and formats the part before the time
/// of day once per day. "Today" is the day on which this object was made.
class DateTexts {
public:
    DateTexts();

    /// The text for @p seconds since 1970-01-01 00:00:00 UTC; null if memory runs out.
    [[nodiscard]] Text textFor(int64_t seconds);

private:
    /// A local day from 00:00:00 to 23:59:59 on which the clock is not changed.
    struct Day {
        int64_t first = 0;    ///< midnight, in seconds since 1970-01-01 00:00:00 UTC
        char prefix[56] = {}; ///< the text before the time of day
    };

    [[nodiscard]] const Day *cachedDay(int64_t seconds) const;
    void cacheDay(int64_t seconds, const std::tm &fields);

    std::tm now_{};
    /// UTC day n has two keys: 2n for the local day at its start, 2n + 1 for the one at its end.
    LookupCache<Day> days_;
};

} // namespace MWCore
