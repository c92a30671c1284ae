// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "FinderInfo.h"

#include <MWCore/OSStatus.h>

#include <functional>
#include <optional>

#include <QByteArray>

/// Finder information and resource forks, wherever programs on this system store them: in extended
/// attributes and sidecar files (docs/metadata.md). The item itself is never opened, and a link is
/// never followed; its data, mode and times (except the change time) are preserved. Paths are in
/// file-system representation. A function that changes something returns foreignLinkErr if the path
/// contains a link that another user could have made. Any thread.
namespace MWCore {

/// Whether the folder of an item can contain sidecars.
enum class Sidecars {
    MayExist,
    Absent, ///< no name in the folder begins with "._"
};

/// Whether extended attributes may hold Finder information or a fork for the entry @p name of the
/// open folder @p folder, to which @p path leads as well. Only regular files and folders can have
/// such attributes. Costs one llistxattr, or listxattrat where the kernel has it. Also true if the
/// attributes could not be listed, unless the file system has none.
[[nodiscard]] MWCORE_EXPORT bool mayHaveMetadataAttributes(int folder, const char *name,
                                                           const QByteArray &path);

/// Reads an item's Finder information into @p info; all zero if there is none. If two places
/// disagree, the first in the order of docs/metadata.md counts, and the disagreement is logged. An
/// item without Finder information costs one llistxattr and, unless @p sidecars is Absent, one
/// failed open.
[[nodiscard]] MWCORE_EXPORT OSStatus readFinderInfo(const QByteArray &path, FinderInfo *info,
                                                    Sidecars sidecars = Sidecars::MayExist);

/// Calls @p change with an item's current Finder information and writes the changed fields to every
/// place that holds some; the other fields of each place are preserved. If no place holds any, it
/// is written to the extended attribute `user.com.apple.FinderInfo` or, if the file system has no
/// extended attributes, to a sidecar. Changes that others write meanwhile are not lost: @p change,
/// which must not throw, is called again with what they wrote. On failure the old information
/// remains. errFSOperationNotSupported for a link, fifo, socket or device, unless a sidecar already
/// holds some.
[[nodiscard]] MWCORE_EXPORT OSStatus
changeFinderInfo(const QByteArray &path, const std::function<void(FinderInfo &)> &change);

/// The same with all fields of @p info, even those that others have changed since it was read.
[[nodiscard]] MWCORE_EXPORT OSStatus writeFinderInfo(const QByteArray &path,
                                                     const FinderInfo &info);

/// Removes an item's Finder information from every place. Other data in those places is preserved.
[[nodiscard]] MWCORE_EXPORT OSStatus removeFinderInfo(const QByteArray &path);

/// Lengths of an item's resource fork in bytes; both 0 if it has none.
struct ForkSize {
    int64_t logical = 0;
    int64_t physical = 0; ///< space taken on the disk
};
[[nodiscard]] MWCORE_EXPORT OSStatus resourceForkSize(const QByteArray &path, ForkSize *size,
                                                      Sidecars sidecars = Sidecars::MayExist);

/// The whole resource fork. nullopt on failure, with the cause in @p status: resFNotFound if there
/// is none.
[[nodiscard]] MWCORE_EXPORT std::optional<QByteArray> readResourceFork(const QByteArray &path,
                                                                       OSStatus *status);

/// Writes the fork to the extended attribute that already holds one, else to the sidecar. An empty
/// @p fork removes it. On failure the old fork remains. errFSOperationNotSupported unless the item
/// is a regular file or a folder; fileBoundsErr if the sidecar would be larger than 256 MB.
[[nodiscard]] MWCORE_EXPORT OSStatus writeResourceFork(const QByteArray &path,
                                                       const QByteArray &fork);

} // namespace MWCore
