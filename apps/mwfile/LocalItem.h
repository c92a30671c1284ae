// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "model/item/MXFileSystemObject.h"

#include <memory>
#include <optional>
#include <string>

namespace MWCore::mwfile {

/// The folder at @p path with its contents. Throws Failure, about @p path as given, when it is no
/// folder or its contents cannot be read.
[[nodiscard]] MXFileSystemObject::Ptr listedFolder(const std::string &path);

struct DestroyTree {
    void operator()(mfs_fso *record) const { mfs_fso_destroy_tree(record); }
};

using RecordTree = std::unique_ptr<mfs_fso, DestroyTree>;

/// An item; for a folder, why what is in it could not be read, or nothing where it could.
struct DescribedItem {
    RecordTree record;
    MXFileSystemObject::Ptr object; ///< around the record, and gone before it
    std::string contentsFailure;
};

/// The item at @p path itself; when the path ends with "/", the folder that it leads to. What is in
/// a folder is not looked at. Throws Failure when the item cannot be examined.
[[nodiscard]] DescribedItem itemItself(const std::string &path);

/// The same with what is in a folder; one that cannot be read is no failure.
[[nodiscard]] DescribedItem describedItem(const std::string &path);

/// What an item is that is no file, folder or link.
struct NodeKind {
    uint32_t type; ///< the S_IFMT bits of its mode (POSIX sys/stat.h)
    char letter;   ///< as in a listing
    const char *word;
};

/// The kind of such an item as it is now, or null.
[[nodiscard]] const NodeKind *nodeKind(const MXFileSystemObject &item);

/// Whether it is there to lead to another item: a link, also a dead one, or an alias.
[[nodiscard]] bool isPointer(const MXFileSystemObject &item);

/// Whether it is not known where the target of an alias is: it would have to be searched or waited
/// for.
[[nodiscard]] bool isLost(const MXFileSystemObject &alias);

/// The path to which a link leads in the end, as the listing saw it; nothing when it leads nowhere
/// or to something without a path.
[[nodiscard]] std::optional<std::string> linkTarget(const MXFileSystemObject &link);

/// The same of an alias, too: nothing when it is lost.
[[nodiscard]] std::optional<std::string> finalTarget(const MXFileSystemObject &item);

} // namespace MWCore::mwfile
