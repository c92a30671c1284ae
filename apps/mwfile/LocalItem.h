// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/MXFileSystemObject.h>

#include <optional>
#include <string>

namespace MWCore::mwfile {

/// The folder at @p path with its contents. Throws Failure, about @p path as given, when it is no
/// folder or its contents cannot be read.
[[nodiscard]] MXFileSystemObject::Ptr listedFolder(const std::string &path);

/// An item and, for a folder, why its contents could not be read.
struct DescribedItem {
    MXFileSystemObject::Ptr object;
    OSStatus contentsError = noErr;
};

/// The item at @p path itself; when the path ends with "/", the folder that it leads to. What is in
/// a folder is not looked at. Throws Failure when the item cannot be examined.
[[nodiscard]] MXFileSystemObject::Ptr itemItself(const std::string &path);

/// The same with what is in a folder; one that cannot be read is no failure.
[[nodiscard]] DescribedItem describedItem(const std::string &path);

/// The name that the item goes by in its folder, also of a volume.
[[nodiscard]] std::string nameInFolder(const MXFileSystemObject &item);

/// The letter that stands for a kind of node in a listing.
[[nodiscard]] char nodeLetter(MXNodeKind kind);

/// What a node is called that is no file, folder or link; null for those.
[[nodiscard]] const char *nodeWord(MXNodeKind kind);

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
