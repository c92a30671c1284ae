// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "MXFileSystemObject.h"

#include <MWCore/ItemMetadata.h>
#include <MWCore/mwcore_export.h>
#include <MWCore/TimeBudget.h>

#include <memory>

namespace MWCore {

class SidecarNames;

/// Reads the metadata of the items of a listed folder. Faster than item by item, because the
/// listing shows which items have no sidecar. All items together take no longer than a time budget
/// allows, even if their metadata was made to be slow to read. Belongs to one thread.
class MWCORE_EXPORT ListedMetadata {
public:
    /// Enough for any folder that was not made to stall a listing (docs/decisions/0015).
    static constexpr TimeBudget::Limits kUsualLimits = {.fixed = 35'000'000, .share = 20};

    /// For the children of @p folder. @p timeBudget must outlive this object; ListedAliases may
    /// share it.
    ListedMetadata(const MXFileSystemObject &folder, TimeBudget &timeBudget);
    ListedMetadata(const ListedMetadata &) = delete;
    ListedMetadata &operator=(const ListedMetadata &) = delete;
    ~ListedMetadata();

    /// Reads the current metadata of @p child. A part that takes longer than the time budget allows
    /// has the status fileBoundsErr.
    [[nodiscard]] ItemMetadata read(const MXFileSystemObject &child,
                                    ItemMetadata::Parts parts = ItemMetadata::kAllParts);

private:
    TimeBudget &timeBudget_;
    std::unique_ptr<SidecarNames> sidecars_;
};

} // namespace MWCore
