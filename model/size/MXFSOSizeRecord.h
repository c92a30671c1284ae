// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>

namespace MWCore {

/// What an item takes, and how much is in it. Sizes are in bytes; what a sort of item does not have
/// is 0.
struct MXFSOSizeRecord {
    // Of a folder the sums over everything below it; of a volume not told.
    uint64_t dataForkSize = 0;
    uint64_t physicalDataForkSize = 0; ///< allocated
    uint64_t resourceForkSize = 0;
    uint64_t physicalResourceForkSize = 0; ///< allocated

    uint64_t volumeFreeBytes = 0;   ///< of volumes alone
    uint64_t totalSize = 0;         ///< both forks; of a volume its capacity
    uint64_t physicalTotalSize = 0; ///< both forks; of a volume not told

    // What is inside, at any depth.
    uint64_t containedItemCount = 0;
    uint64_t containedFolderCount = 0;
    uint64_t containedFileCount = 0; ///< everything that is no folder
    uint64_t hiddenItemCount = 0;    ///< those that file managers are asked to hide

    friend bool operator==(const MXFSOSizeRecord &, const MXFSOSizeRecord &) = default;
};

} // namespace MWCore
