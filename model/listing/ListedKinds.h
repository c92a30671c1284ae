// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/mfs_fso.h"
#include "model/listing/Classification.h"
#include "platform/metadata/Sidecar.h"

#include <cstdint>
#include <vector>

#include <sys/stat.h>

namespace MWCore {

/// The kinds of a folder's children, found while the folder is listed: the item is then in the
/// system's caches, and examining it costs half as much as later. Inspecting the contents of items
/// and sidecars takes a limited time. Belongs to one thread.
class ListedKinds {
public:
    /// @p begin is the listingTime() before the listing.
    explicit ListedKinds(TimeBudget::Limits limits, int64_t begin = 0)
        : begin_(begin), inspection_(InspectionContext::Extent::Listing, limits) {}

    /// An mfs_fso_visitor; @p self is the object.
    static void visit(void *self, const mfs_fso *child, const struct stat *item,
                      int32_t index) noexcept;

    /// The kind of @p child, which is number @p index of its folder's `files` or, if it is a
    /// directory, `subdirectories`.
    [[nodiscard]] Classification of(const mfs_fso *child, int32_t index) const;

private:
    void reset();
    void add(const mfs_fso &child, const struct stat &item);
    [[nodiscard]] Classification kindOf(const mfs_fso &child, Sidecars sidecars,
                                        uint64_t inodeState = 0) const;

    int64_t begin_;
    std::vector<Classification> files_;
    std::vector<Classification> subdirectories_;
    mutable InspectionContext inspection_;
    SidecarNames sidecars_;
};

} // namespace MWCore
