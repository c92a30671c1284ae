// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/MXFileSystemObject.h>

#include <optional>
#include <string>

namespace MWCore::mwfile {

/// The folder at @p path with its children. Throws Failure, with @p path as given, if it is not a
/// folder or its contents cannot be read.
[[nodiscard]] MXFileSystemObject::Ptr listedFolder(const std::string &path);

/// An item and, for a folder, the status of reading its contents.
struct ItemWithContents {
    MXFileSystemObject::Ptr object;
    OSStatus contentsError = noErr;
};

/// The item at @p path; a link is followed only if the path ends with "/". Does not read a folder's
/// contents. Throws Failure if the item cannot be examined.
[[nodiscard]] MXFileSystemObject::Ptr itemAtPath(const std::string &path);

/// The same, but reads a folder's contents. It is not a failure if they cannot be read.
[[nodiscard]] ItemWithContents itemWithContents(const std::string &path);

/// The item's name in its folder; for a volume, that of the mount point.
[[nodiscard]] std::string nameInFolder(const MXFileSystemObject &item);

/// The letter for a kind of node in a listing.
[[nodiscard]] char nodeLetter(MXNodeKind kind);

/// The word for a fifo, socket or device; null for other nodes.
[[nodiscard]] const char *nodeWord(MXNodeKind kind);

/// Whether the item is an alias or a link, possibly broken.
[[nodiscard]] bool isLinkOrAlias(const MXFileSystemObject &item);

/// Whether the target of an alias is not known, because finding it would take a search or waiting.
[[nodiscard]] bool isTargetUnknown(const MXFileSystemObject &alias);

/// The path of a link's final target, from the listing; nullopt if the link is broken or its target
/// has no path.
[[nodiscard]] std::optional<std::string> linkTarget(const MXFileSystemObject &link);

/// The same for a link or alias; nullopt if isTargetUnknown().
[[nodiscard]] std::optional<std::string> finalTarget(const MXFileSystemObject &item);

} // namespace MWCore::mwfile
