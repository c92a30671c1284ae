// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/mfs_fso.h"

#include <QExplicitlySharedDataPointer>
#include <QSharedData>

namespace MWCore {

/// The records of one listing, owned jointly by the objects that wrap them. The tree of a record
/// can be looked up, so a host that kept only the record can get an object for it again. of() works
/// on any thread; a tree belongs to one.
class ListedTree : public QSharedData {
public:
    using Ptr = QExplicitlySharedDataPointer<ListedTree>;

    /// A new tree, which takes ownership of @p root and the records below it.
    [[nodiscard]] static Ptr own(mfs_fso *root);

    /// The tree of @p record; null for a record made by the host.
    [[nodiscard]] static Ptr of(const mfs_fso *record);

    ListedTree(const ListedTree &) = delete;
    ListedTree &operator=(const ListedTree &) = delete;
    ~ListedTree();

private:
    explicit ListedTree(mfs_fso *root) : root_(root) {}

    mfs_fso *root_;
};

} // namespace MWCore
