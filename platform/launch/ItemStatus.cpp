// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/launch/ItemStatus.h"

#include <cerrno>

#include <fcntl.h>

namespace MWCore {
namespace {

/// For kernels before 5.8. The root folder is its own parent.
bool differsFromParent(const QByteArray &path) {
    struct stat item = {};
    struct stat parent = {};
    if (lstat(path.constData(), &item) != 0 || stat((path + "/..").constData(), &parent) != 0)
        return false;
    return item.st_dev != parent.st_dev || item.st_ino == parent.st_ino;
}

int64_t nanoseconds(const statx_timestamp &time) {
    constexpr int64_t kSecond = 1'000'000'000;
    return time.tv_sec * kSecond + time.tv_nsec;
}

} // namespace

ItemStatus itemStatus(const QByteArray &path) {
    struct statx item = {};
    constexpr int kFlags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC;
    if (statx(AT_FDCWD, path.constData(), kFlags, STATX_TYPE | STATX_CTIME, &item) != 0)
        return {.status = statusFromErrno(errno)};
    const bool isTold = (item.stx_attributes_mask & STATX_ATTR_MOUNT_ROOT) != 0;
    const bool isMountPoint =
        S_ISDIR(item.stx_mode) &&
        (isTold ? (item.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0 : differsFromParent(path));
    const bool isLocked = (item.stx_attributes & STATX_ATTR_IMMUTABLE) != 0;
    return {item.stx_mode, isMountPoint, isLocked, nanoseconds(item.stx_ctime), noErr};
}

} // namespace MWCore
