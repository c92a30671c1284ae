// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/SeenTable.h"

#include <ctime>

namespace MWCore {

/// Makes the texts of mfs_date_string_from_time_t() for many items, each day's part once. "Now" is
/// the time of creation.
class DateTexts {
public:
    DateTexts();

    /// The text for @p seconds since 1970-01-01 UTC; null when memory runs out.
    [[nodiscard]] Text textFor(int64_t seconds);

private:
    /// A local day that runs from 00:00:00 to 23:59:59 without a change of the clock.
    struct Day {
        int64_t first = 0;    ///< seconds since 1970-01-01 UTC at midnight
        char prefix[56] = {}; ///< everything before the time of day
    };

    [[nodiscard]] const Day *seenDay(int64_t seconds) const;
    void rememberDay(int64_t seconds, const std::tm &fields);

    std::tm now_{};
    /// By number of the day in UTC, twice: the local days that hold its start and its end.
    SeenTable<Day> days_;
};

} // namespace MWCore
