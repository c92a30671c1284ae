// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/files/MountSnapshot.h"
#include "platform/foundation/TimeBudget.h"
#include "platform/references/AliasResolution.h"

#include <cstdint>
#include <optional>

namespace MWCore {

/// What the inspections of items share. Their contents are untrusted: another user may have made
/// them slow to inspect. Belongs to one thread.
struct InspectionContext {
    enum class Extent {
        OneItem, ///< takes as long as necessary
        Listing, ///< all items of a folder; limited by the time budget, and never waits
    };

    /// In addition to the time of the listing itself (docs/decisions/0015).
    static constexpr TimeBudget::Limits kForListing = {.fixed = 60'000'000, .share = 40};
    static constexpr TimeBudget::Limits kUnlimited = {.fixed = INT64_MAX / 2, .share = 0};

    explicit InspectionContext(Extent items)
        : InspectionContext(items, items == Extent::Listing ? kForListing : kUnlimited) {}
    InspectionContext(Extent items, TimeBudget::Limits limits)
        : extent(items), timeBudget(limits) {}

    Extent extent;
    TimeBudget timeBudget;
    MountSnapshot mounts;
    std::optional<int32_t> ownMount; ///< id of the mount of the items, set when first needed
};

} // namespace MWCore
