// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>

namespace MWCore {

/// The size of an item and the number of items in it. Sizes are in bytes; a field that does not
/// apply to the item is 0.
struct MXFSOSizeRecord {
    // For a folder, the sums over everything below it; for a volume, 0.
    uint64_t dataForkSize = 0;
    uint64_t physicalDataForkSize = 0; ///< allocated
    uint64_t resourceForkSize = 0;
    uint64_t physicalResourceForkSize = 0; ///< allocated

    uint64_t volumeFreeBytes = 0;   ///< for a volume only
    uint64_t totalSize = 0;         ///< both forks; for a volume, its capacity
    uint64_t physicalTotalSize = 0; ///< both forks; for a volume, 0

    // Contained items at any depth.
    uint64_t containedItemCount = 0;
    uint64_t containedFolderCount = 0;
    uint64_t containedFileCount = 0; ///< everything that is not a folder
    uint64_t hiddenItemCount = 0;    ///< with the Finder flag kIsInvisible

    /// Adds the sizes of both forks and the numbers of files, folders and hidden items, but no
    /// totals.
    MXFSOSizeRecord &operator+=(const MXFSOSizeRecord &part) {
        dataForkSize += part.dataForkSize;
        physicalDataForkSize += part.physicalDataForkSize;
        resourceForkSize += part.resourceForkSize;
        physicalResourceForkSize += part.physicalResourceForkSize;
        containedFolderCount += part.containedFolderCount;
        containedFileCount += part.containedFileCount;
        hiddenItemCount += part.hiddenItemCount;
        return *this;
    }

    friend bool operator==(const MXFSOSizeRecord &, const MXFSOSizeRecord &) = default;
};

} // namespace MWCore
