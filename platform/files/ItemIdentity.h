// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/posix/Descriptor.h"
#include "platform/files/FileIdentity.h"
#include "platform/foundation/OSStatus.h"

#include <optional>

/// How an item is recognised after it was renamed or moved. Any thread.
namespace MWCore {

/// The identity of the item at @p path, relative to the open folder @p folder (or AT_FDCWD); a link
/// is not followed. An empty path means the open item @p folder. nullopt on failure, with the cause
/// in @p status.
[[nodiscard]] std::optional<FileIdentity> identityOf(int folder, const char *path,
                                                     OSStatus *status);

/// Opens, with O_PATH, the item whose handle is in @p identity and which is on the same file system
/// as the open folder @p folder. Only the superuser may. Returns an empty descriptor on failure,
/// with the cause in @p status: fnfErr only if the item no longer exists.
[[nodiscard]] Descriptor openByHandle(int folder, const FileIdentity &identity, OSStatus *status);

/// Whether the identity has more than an inode number, which later items can get again.
[[nodiscard]] bool isUnambiguous(const FileIdentity &identity);

/// Whether @p found is the same item as @p wanted. Inode numbers are reused, and some are the same
/// on every volume. So handles and birth times must agree where both identities have them, and at
/// least one of the two must be in both, unless neither identity has any. Device numbers are not
/// compared.
[[nodiscard]] bool isSameItem(const FileIdentity &found, const FileIdentity &wanted);

/// Whether @p found, which was read at @p path, is the item that @p wanted was read from at the
/// same path. On FUSE even inode numbers can change when the kernel drops its cache; there the path
/// decides.
[[nodiscard]] bool isSameItemAt(const QByteArray &path, const FileIdentity &found,
                                const FileIdentity &wanted);

} // namespace MWCore
