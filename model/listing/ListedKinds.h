// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/mfs_fso.h"
#include "model/listing/Classification.h"

#include <vector>

#include <QByteArray>
#include <QSet>

namespace MWCore {

/// The kinds of a folder's children, each found while the folder is listed: the system has just
/// looked at the item then, and a second look costs half of what it does later. What others wrote
/// in the items or beside them is looked into for a bounded time.
class ListedKinds {
public:
    explicit ListedKinds(TimeBudget::Limits limits = InspectionContext::kForListing)
        : inspection_(InspectionContext::Extent::Listing, limits) {}

    /// To be told of each child (mfs_fso_visitor); @p self is the object.
    static void visit(void *self, const mfs_fso *child, int32_t index) noexcept;

    /// The kind of child number @p index among its folder's files or, as @p child is one,
    /// subdirectories.
    [[nodiscard]] Classification of(const mfs_fso *child, int32_t index) const;

private:
    void beginAgain();
    void add(const mfs_fso &child);
    [[nodiscard]] Classification kindOf(const mfs_fso &child, Sidecars sidecars) const;

    std::vector<Classification> files_;
    std::vector<Classification> subdirectories_;
    mutable InspectionContext inspection_; ///< what is left of it
    QSet<QByteArray> described_;           ///< names of items beside which a sidecar stands
};

} // namespace MWCore
