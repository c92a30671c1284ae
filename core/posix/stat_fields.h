// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>

#include <sys/stat.h>
#include <sys/sysmacros.h>

/// The fields of `struct stat` and `struct statx`, as inode(7) describes them.
namespace MWCore {

/// Permissions with the set-user-ID, set-group-ID and sticky bits.
inline constexpr mode_t kPermissionBits = 07777;

/// Whether the owner, the group or others may execute the file.
[[nodiscard]] constexpr bool hasExecuteBit(mode_t mode) {
    return (mode & (S_IXUSR | S_IXGRP | S_IXOTH)) != 0;
}

/// Whether the item is a regular file or a folder. On other items users cannot set extended
/// attributes.
[[nodiscard]] constexpr bool isFileOrFolder(mode_t mode) {
    return S_ISREG(mode) || S_ISDIR(mode);
}

/// The device number, as in st_dev.
[[nodiscard]] inline dev_t deviceOf(const struct statx &item) {
    return makedev(item.stx_dev_major, item.stx_dev_minor);
}

/// Whether both are of one file that exists: another one can get its numbers once it is removed.
[[nodiscard]] inline bool isSameFile(const struct stat &one, const struct stat &other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

/// The space that a number of blocks takes, in bytes: they are of 512 bytes on every file system.
[[nodiscard]] constexpr uint64_t lengthOfBlocks(uint64_t count) {
    return count * 512;
}

} // namespace MWCore
