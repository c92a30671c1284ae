// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/files/FileIdentity.h"
#include "platform/foundation/OSStatus.h"

#include <optional>

/// How an item is recognised. Any thread.
namespace MWCore {

/// The identity of the item @p path relative to the open folder @p folder (or AT_FDCWD); of a link
/// itself. An empty path means the open item @p folder. Nothing on failure, with the cause in
/// @p status.
[[nodiscard]] std::optional<FileIdentity> identityOf(int folder, const char *path,
                                                     OSStatus *status);

/// Whether there is more to it than an inode number, which other items get as well.
[[nodiscard]] bool isStrong(const FileIdentity &identity);

/// Whether @p found is the item that @p wanted was. Inode numbers are used again, and some are the
/// same on every volume: the handle and the time of birth must agree where both have one, and
/// one of them must, unless neither item has any. Device numbers are not compared.
[[nodiscard]] bool isSameItem(const FileIdentity &found, const FileIdentity &wanted);

} // namespace MWCore
