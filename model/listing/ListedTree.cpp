// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/listing/ListedTree.h"

#include <mutex>
#include <unordered_map>

namespace MWCore {
namespace {

/// Maps roots to trees.
struct Trees {
    std::mutex mutex;
    std::unordered_map<const mfs_fso *, ListedTree *> byRoot;
};

Trees &trees() {
    static auto *const all = new Trees; // never freed: objects may outlive static ones
    return *all;
}

} // namespace

ListedTree::Ptr ListedTree::own(mfs_fso *root) {
    Ptr tree(new ListedTree(root));
    const std::scoped_lock lock(trees().mutex);
    trees().byRoot.emplace(root, tree.data());
    return tree;
}

ListedTree::Ptr ListedTree::of(const mfs_fso *record) {
    const std::scoped_lock lock(trees().mutex);
    // A host may have added the root to its own folder.
    for (; record; record = mfs_fso_parent(record))
        if (const auto found = trees().byRoot.find(record); found != trees().byRoot.end())
            return Ptr(found->second);
    return {};
}

ListedTree::~ListedTree() {
    {
        const std::scoped_lock lock(trees().mutex);
        trees().byRoot.erase(root_);
    }
    mfs_fso_destroy_tree(root_);
}

} // namespace MWCore
