// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/posix/Descriptor.h"
#include "core/posix/FinalLink.h"
#include "platform/foundation/mwcore_export.h"
#include "platform/foundation/OSStatus.h"

#include <optional>

#include <QByteArray>

/// Opens and reads regular files, and opens folders, at paths that may turn out to hold anything
/// else. Nothing is opened before its kind is known: a fifo never blocks, a device is never
/// touched. Any thread.
namespace MWCore {

/// Opens the regular file at @p path, relative to the open folder @p folder (or AT_FDCWD), for
/// reading. Returns an empty descriptor on failure, with the cause in @p status:
/// errFSOperationNotSupported if the item is not a regular file, fnfErr only if nothing is there.
[[nodiscard]] Descriptor openRegularFileAt(int folder, const QByteArray &path, FinalLink links,
                                           OSStatus *status);
[[nodiscard]] Descriptor openRegularFile(const QByteArray &path, FinalLink links, OSStatus *status);

/// Opens a regular file or a folder in the same way, never through a link.
[[nodiscard]] Descriptor openFileOrFolderAt(int folder, const QByteArray &path, OSStatus *status);

/// Opens the folder at @p path for reading its names. @p folder may be an O_PATH descriptor.
/// Returns an empty descriptor on failure, with the cause in @p status, which may be null.
[[nodiscard]] Descriptor openFolderAt(int folder, const char *path, FinalLink link,
                                      OSStatus *status = nullptr);

/// The next @p limit bytes of the open file @p descriptor from @p offset on, fewer if the file ends
/// before. nullopt on failure, with the cause in @p status.
[[nodiscard]] std::optional<QByteArray> readAt(int descriptor, int64_t offset, int64_t limit,
                                               OSStatus *status);

/// The first @p length bytes of the regular file at @p path, fewer if it is shorter. nullopt on
/// failure, with the cause in @p status.
[[nodiscard]] std::optional<QByteArray> readStartOf(const QByteArray &path, int64_t length,
                                                    FinalLink link, OSStatus *status);

/// The content of the open regular file @p descriptor. nullopt on failure, with the cause in
/// @p status: fileBoundsErr if the file is longer than @p limit bytes.
[[nodiscard]] std::optional<QByteArray> readWhole(int descriptor, int64_t limit, OSStatus *status);

/// The content of the regular file at @p path. nullopt on failure, with the cause in @p status:
/// fileBoundsErr if the file is longer than @p limit bytes.
[[nodiscard]] MWCORE_EXPORT std::optional<QByteArray>
readRegularFile(const QByteArray &path, int64_t limit, FinalLink links, OSStatus *status);

} // namespace MWCore
