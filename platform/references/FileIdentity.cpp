// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/references/FileIdentity.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace MWCore {
namespace {

/// Without a handle where there is none; that is no failure.
void addHandle(int folder, const char *path, FileIdentity &identity) {
    union {
        file_handle header;
        char room[sizeof(file_handle) + MAX_HANDLE_SZ];
    } handle = {};
    handle.header.handle_bytes = MAX_HANDLE_SZ;
    int mount = 0;
    if (name_to_handle_at(folder, path, &handle.header, &mount, 0) != 0)
        return;
    identity.handleType = handle.header.handle_type;
    identity.handle =
        QByteArray(handle.room + sizeof(file_handle), qsizetype(handle.header.handle_bytes));
}

} // namespace

std::optional<FileIdentity> identityOf(int folder, const char *path, OSStatus *status) {
    struct statx item = {};
    if (statx(folder, path, AT_SYMLINK_NOFOLLOW | AT_STATX_SYNC_AS_STAT, STATX_INO | STATX_BTIME,
              &item) != 0) {
        *status = statusFromErrno(errno);
        return std::nullopt;
    }
    FileIdentity identity;
    identity.device = makedev(item.stx_dev_major, item.stx_dev_minor);
    identity.inode = item.stx_ino;
    constexpr int64_t kNanoseconds = 1'000'000'000;
    if (item.stx_mask & STATX_BTIME)
        identity.birthTime = item.stx_btime.tv_sec * kNanoseconds + item.stx_btime.tv_nsec;
    addHandle(folder, path, identity);
    *status = noErr;
    return identity;
}

bool isSameItem(const FileIdentity &found, const FileIdentity &wanted) {
    const bool hasHandles = !found.handle.isEmpty() && !wanted.handle.isEmpty();
    const bool isOtherHandle =
        hasHandles && (found.handleType != wanted.handleType || found.handle != wanted.handle);
    const bool hasBirths = found.birthTime && wanted.birthTime;
    return found.inode == wanted.inode && !isOtherHandle &&
           (!hasBirths || found.birthTime == wanted.birthTime);
}

} // namespace MWCore
