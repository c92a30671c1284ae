// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/mfs_fso.h"
#include "model/listing/Classification.h"
#include "platform/metadata/Sidecar.h"

#include <vector>

namespace MWCore {

/// The kinds of a folder's children, found while the folder is listed: the item is then in the
/// system's caches, and examining it costs half as much as later. Inspecting the contents of items
/// and sidecars takes a limited time. Belongs to one thread.
class ListedKinds {
public:
    explicit ListedKinds(TimeBudget::Limits limits = InspectionContext::kForListing)
        : inspection_(InspectionContext::Extent::Listing, limits) {}

    /// An mfs_fso_visitor; @p self is the object.
    static void visit(void *self, const mfs_fso *child, int32_t index) noexcept;

    /// The kind of @p child, which is number @p index of its folder's `files` or, if it is a
    /// directory, `subdirectories`.
    [[nodiscard]] Classification of(const mfs_fso *child, int32_t index) const;

private:
    void reset();
    void add(const mfs_fso &child);
    [[nodiscard]] Classification kindOf(const mfs_fso &child, Sidecars sidecars) const;

    std::vector<Classification> files_;
    std::vector<Classification> subdirectories_;
    mutable InspectionContext inspection_;
    SidecarNames sidecars_;
};

} // namespace MWCore
