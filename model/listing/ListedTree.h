// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/mfs_fso.h"

#include <QExplicitlySharedDataPointer>
#include <QSharedData>

namespace MWCore {

/// The records of one listing, owned together by the objects around them. A record alone leads back
/// to its tree, so that a host that kept nothing but the record can have an object for it again.
/// Any thread for of(); a tree itself belongs to one.
class ListedTree : public QSharedData {
public:
    using Ptr = QExplicitlySharedDataPointer<ListedTree>;

    /// Takes the records at and below @p root.
    [[nodiscard]] static Ptr own(mfs_fso *root);

    /// The tree that @p record belongs to; null for a record of a host.
    [[nodiscard]] static Ptr of(const mfs_fso *record);

    ListedTree(const ListedTree &) = delete;
    ListedTree &operator=(const ListedTree &) = delete;
    ~ListedTree();

private:
    explicit ListedTree(mfs_fso *root) : root_(root) {}

    mfs_fso *root_;
};

} // namespace MWCore
