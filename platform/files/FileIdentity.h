// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "FileStatus.h"

#include <cstdint>
#include <optional>

#include <QByteArray>

namespace MWCore {

/// What stays the same of an item while its names change. Valid on one volume; device numbers may
/// differ from one start of the system to the next.
struct FileIdentity {
    uint64_t device = 0; ///< as st_dev
    uint64_t inode = 0;

    /// When the item was made, in nanoseconds since 1970-01-01 UTC; nothing where the file system
    /// does not keep it.
    std::optional<int64_t> birthTime;

    /// The kernel's own name of the item (name_to_handle_at(2)); empty where the file system gives
    /// none.
    int32_t handleType = 0;
    QByteArray handle;

    friend bool operator==(const FileIdentity &, const FileIdentity &) = default;
};

/// The identity of the item @p path relative to the open folder @p folder (or AT_FDCWD); of a link
/// itself. Nothing on failure, with the cause in @p status.
[[nodiscard]] std::optional<FileIdentity> identityOf(int folder, const char *path,
                                                     OSStatus *status);

/// Whether @p found is the item that @p wanted was: inode numbers are used again, and some are the
/// same on every volume, so the handle and the time of birth must agree where both have one. Device
/// numbers are not compared.
[[nodiscard]] bool isSameItem(const FileIdentity &found, const FileIdentity &wanted);

} // namespace MWCore
