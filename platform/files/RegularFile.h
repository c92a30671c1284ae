// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/posix/Descriptor.h"
#include "platform/foundation/OSStatus.h"

#include <optional>

#include <QByteArray>

/// Opening and reading plain files that may turn out to be anything else. Nothing is opened before
/// its kind is known: a fifo never blocks, a device is never touched. Any thread.
namespace MWCore {

/// What a link at the end of a path means.
enum class Links { Keep, Follow };

/// Opens the plain file at @p path, which is relative to the open folder @p folder (or AT_FDCWD),
/// for reading. An empty descriptor on failure, with the cause in @p status:
/// errFSOperationNotSupported for what is no plain file, fnfErr only when nothing is there.
[[nodiscard]] Descriptor openRegularFileAt(int folder, const QByteArray &path, Links links,
                                           OSStatus *status);
[[nodiscard]] Descriptor openRegularFile(const QByteArray &path, Links links, OSStatus *status);

/// The same for a plain file or a folder, never through a link.
[[nodiscard]] Descriptor openFileOrFolderAt(int folder, const QByteArray &path, OSStatus *status);

/// The first @p limit bytes of the open file @p descriptor from @p offset on, fewer where it ends
/// before. Nothing on failure, with the cause in @p status.
[[nodiscard]] std::optional<QByteArray> readAt(int descriptor, int64_t offset, int64_t limit,
                                               OSStatus *status);

/// The whole open plain file @p descriptor. Nothing on failure, with the cause in @p status:
/// fileBoundsErr for a file of more than @p limit bytes.
[[nodiscard]] std::optional<QByteArray> readWhole(int descriptor, int64_t limit, OSStatus *status);

/// The whole plain file at @p path. Nothing on failure, with the cause in @p status: fileBoundsErr
/// for a file of more than @p limit bytes.
[[nodiscard]] std::optional<QByteArray> readRegularFile(const QByteArray &path, int64_t limit,
                                                        Links links, OSStatus *status);

} // namespace MWCore
