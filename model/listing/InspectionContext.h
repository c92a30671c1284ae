// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/files/MountSnapshot.h"
#include "platform/foundation/TimeBudget.h"
#include "platform/references/AliasResolution.h"

#include <cstdint>
#include <optional>

namespace MWCore {

/// What the looks into items share that find their kinds: into what others wrote, who may mean to
/// stall us. Belongs to one thread.
struct InspectionContext {
    enum class Extent {
        OneItem, ///< asked for by itself: as long as it takes
        Listing, ///< all items of a folder: together no longer than the time budget, and no waiting
    };

    /// Beside what listing the rest takes (docs/decisions/0015).
    static constexpr TimeBudget::Limits kForListing = {.fixed = 60'000'000, .share = 40};
    static constexpr TimeBudget::Limits kUnlimited = {.fixed = INT64_MAX / 2, .share = 0};

    explicit InspectionContext(Extent guard)
        : InspectionContext(guard, guard == Extent::Listing ? kForListing : kUnlimited) {}
    InspectionContext(Extent guard, TimeBudget::Limits limits)
        : extent(guard), timeBudget(limits) {}

    Extent extent;
    TimeBudget timeBudget;
    MountSnapshot mounts;
    std::optional<int32_t> ownMount; ///< id of the mount of the items, once one was asked
};

} // namespace MWCore
