// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/launch/ItemStatus.h"

#include "core/posix/stat_fields.h"

#include <cerrno>

#include <QHashFunctions>

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

uint64_t stateOf(dev_t device, ino_t inode, int64_t seconds, int64_t nanoseconds) {
    const uint64_t numbers[] = {device, inode, uint64_t(seconds), uint64_t(nanoseconds)};
    const std::size_t hash = qHashBits(numbers, sizeof numbers);
    return hash == 0 ? 1 : hash;
}

} // namespace

uint64_t inodeState(const struct stat &item) {
    return stateOf(item.st_dev, item.st_ino, item.st_ctim.tv_sec, item.st_ctim.tv_nsec);
}

ItemStatus itemStatus(const QByteArray &path) {
    struct statx item = {};
    constexpr int kFlags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC;
    if (statx(AT_FDCWD, path.constData(), kFlags, STATX_TYPE | STATX_INO | STATX_CTIME, &item) != 0)
        return {.status = statusFromErrno(errno)};
    const bool isTold = (item.stx_attributes_mask & STATX_ATTR_MOUNT_ROOT) != 0;
    const bool isMountPoint =
        S_ISDIR(item.stx_mode) &&
        (isTold ? (item.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0 : differsFromParent(path));
    const bool isLocked = (item.stx_attributes & STATX_ATTR_IMMUTABLE) != 0;
    const uint64_t state =
        stateOf(deviceOf(item), item.stx_ino, item.stx_ctime.tv_sec, item.stx_ctime.tv_nsec);
    return {item.stx_mode, isMountPoint, isLocked, state, noErr};
}

} // namespace MWCore
