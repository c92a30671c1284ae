// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/mfs_fso.h"

#include <memory>
#include <string>

namespace MWCore::mwfile {

struct DestroyTree {
    void operator()(mfs_fso *record) const { mfs_fso_destroy_tree(record); }
};
using ItemTree = std::unique_ptr<mfs_fso, DestroyTree>;

/// The folder at @p path with its contents. Throws Failure, about @p path as given, when it is no
/// folder or its contents cannot be read.
[[nodiscard]] ItemTree listedFolder(const std::string &path);

/// An item; for a folder, why what is in it could not be read, or nothing where it could.
struct DescribedItem {
    ItemTree record;
    std::string contentsFailure;
};

/// The item at @p path itself; when the path ends with "/", the folder that it leads to. Throws
/// Failure when the item cannot be examined; a folder that cannot be read is no failure.
[[nodiscard]] DescribedItem describedItem(const std::string &path);

/// The item's mode word as it is now, which tells more than a record: special bits, and what an
/// item is that is no file, folder or link (POSIX sys/stat.h). 0 when it cannot be examined.
[[nodiscard]] uint32_t currentMode(const mfs_fso &item);

/// What an item is that is no file, folder or link.
struct NodeKind {
    uint32_t type; ///< the S_IFMT bits of its mode
    char letter;   ///< as in a listing
    const char *word;
};

/// The kind of such an item as it is now, or null.
[[nodiscard]] const NodeKind *nodeKind(const mfs_fso &item);

/// The path that a link leads to; null when it leads nowhere or to something without a path.
[[nodiscard]] const char *linkTarget(const mfs_fso &item);

} // namespace MWCore::mwfile
