// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "FinderInfo.h"

#include <MWCore/OSStatus.h>

#include <functional>
#include <optional>

#include <QByteArray>

/// Finder information and resource forks, wherever programs on this system keep them: three
/// extended attributes and sidecar files (see docs/metadata.md). The item itself is never opened,
/// a link never followed; its data, times (except the change time) and mode stay. Paths are in
/// file-system representation. What changes something follows links on the way to the item only
/// where no other user could have made them: foreignLinkErr. Any thread.
namespace MWCore {

/// What is known of the folder that an item is in.
enum class Sidecars {
    MayExist,
    Absent, ///< no name in it begins with "._"
};

/// Whether extended attributes keep Finder information or a fork of the entry @p name of the open
/// folder @p folder, which @p path leads to as well. They never do of other than plain files and
/// folders. One llistxattr, or listxattrat where the kernel has it. Also true when they could not
/// be listed for another reason than that the file system has none.
[[nodiscard]] MWCORE_EXPORT bool mayHaveMetadataAttributes(int folder, const char *name,
                                                           const QByteArray &path);

/// Reads an item's Finder information into @p info, all zero when nothing is kept of it. Where two
/// places disagree the first in the order of docs/metadata.md counts and one line is logged.
/// One llistxattr, and one failed open unless @p sidecars says Absent, for an item without.
[[nodiscard]] MWCORE_EXPORT OSStatus readFinderInfo(const QByteArray &path, FinderInfo *info,
                                                    Sidecars sidecars = Sidecars::MayExist);

/// Lets @p change change an item's Finder information as it is at that moment, and writes what
/// differs to every place that keeps some of the item; other things that a place says there stay.
/// Where none does it goes to the extended attribute `user.com.apple.FinderInfo`, else, where the
/// file system has no extended attributes, to a sidecar. What others write meanwhile is not lost:
/// @p change, which must not throw, is called again with what they wrote. On failure the old
/// information stands. For a link, fifo, socket or device: errFSOperationNotSupported, unless a
/// sidecar keeps some already.
[[nodiscard]] MWCORE_EXPORT OSStatus
changeFinderInfo(const QByteArray &path, const std::function<void(FinderInfo &)> &change);

/// The same with all of @p info, whatever somebody else wrote since it was read.
[[nodiscard]] MWCORE_EXPORT OSStatus writeFinderInfo(const QByteArray &path,
                                                     const FinderInfo &info);

/// Removes it from every place, also what only one of them says. What else is kept there stays.
[[nodiscard]] MWCORE_EXPORT OSStatus removeFinderInfo(const QByteArray &path);

/// Lengths of an item's resource fork in bytes; both 0 without one.
struct ForkSize {
    int64_t logical = 0;
    int64_t physical = 0; ///< what it takes on the disk
};
[[nodiscard]] MWCORE_EXPORT OSStatus resourceForkSize(const QByteArray &path, ForkSize *size,
                                                      Sidecars sidecars = Sidecars::MayExist);

/// The whole resource fork. Nothing on failure, with the cause in @p status: resFNotFound without
/// one.
[[nodiscard]] MWCORE_EXPORT std::optional<QByteArray> readResourceFork(const QByteArray &path,
                                                                       OSStatus *status);

/// Writes the fork to the extended attribute that keeps one already, else to the sidecar. No bytes
/// remove it. On failure the old fork stands. For what is neither a plain file nor a folder:
/// errFSOperationNotSupported; fileBoundsErr when the sidecar would have more than 256 MB.
[[nodiscard]] MWCORE_EXPORT OSStatus writeResourceFork(const QByteArray &path,
                                                       const QByteArray &fork);

} // namespace MWCore
