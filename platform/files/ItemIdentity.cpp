// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/ItemIdentity.h"

#include "core/posix/stat_fields.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>

namespace MWCore {
namespace {

constexpr int32_t kFuseOrXfsHandle = 0x81; ///< both use the kernel's FILEID_INO64_GEN

static_assert(kLongestHandle == MAX_HANDLE_SZ);

/// The kernel's structure with room for any handle.
union HandleBuffer {
    file_handle header;
    char room[sizeof(file_handle) + kLongestHandle];

    [[nodiscard]] char *bytes() { return room + sizeof(file_handle); }
};

/// The parts of an identity that stay the same, by type of file system (statfs(2)).
enum class StableParts { All, AllButHandle, AllButBirth };

/// An empty path means the open item @p folder.
StableParts stablePartsOn(int folder, const char *path) {
    const Descriptor item(*path ? openat(folder, path, O_PATH | O_NOFOLLOW | O_CLOEXEC) : -1);
    struct statfs system = {};
    if (fstatfs(*path ? item.number() : folder, &system) != 0)
        return StableParts::All;
    switch (system.f_type) {
    case FUSE_SUPER_MAGIC: // handles expire with the cache
        return StableParts::AllButHandle;
    case OVERLAYFS_SUPER_MAGIC: // the first write copies the item, which changes its birth time
        return StableParts::AllButBirth;
    default:
        return StableParts::All;
    }
}

/// Leaves the handle empty if the file system has none; that is not a failure.
void addHandle(int folder, const char *path, FileIdentity &identity) {
    HandleBuffer handle = {};
    handle.header.handle_bytes = kLongestHandle;
    int mount = 0;
    if (name_to_handle_at(folder, path, &handle.header, &mount, *path ? 0 : AT_EMPTY_PATH) != 0)
        return;
    identity.handleType = handle.header.handle_type;
    identity.handle = QByteArray(handle.bytes(), qsizetype(handle.header.handle_bytes));
}

} // namespace

std::optional<FileIdentity> identityOf(int folder, const char *path, OSStatus *status) {
    struct statx item = {};
    constexpr int kFlags = AT_SYMLINK_NOFOLLOW | AT_EMPTY_PATH | AT_STATX_SYNC_AS_STAT;
    if (statx(folder, path, kFlags, STATX_INO | STATX_BTIME, &item) != 0) {
        *status = statusFromErrno(errno);
        return std::nullopt;
    }
    FileIdentity identity;
    identity.device = deviceOf(item);
    identity.inode = item.stx_ino;
    constexpr int64_t kNanoseconds = 1'000'000'000;
    if (item.stx_mask & STATX_BTIME)
        identity.birthTime = item.stx_btime.tv_sec * kNanoseconds + item.stx_btime.tv_nsec;
    addHandle(folder, path, identity);
    // Only file systems on virtual devices or with such handles are concerned; others save the
    // call.
    const StableParts stable = item.stx_dev_major == 0 || identity.handleType == kFuseOrXfsHandle
                                   ? stablePartsOn(folder, path)
                                   : StableParts::All;
    if (stable == StableParts::AllButHandle)
        identity.handle.clear();
    if (stable == StableParts::AllButBirth)
        identity.birthTime.reset();
    *status = noErr;
    return identity;
}

Descriptor openByHandle(int folder, const FileIdentity &identity, OSStatus *status) {
    *status = identity.handle.size() > kLongestHandle ? paramErr : noErr;
    if (*status != noErr)
        return {};
    HandleBuffer handle = {};
    handle.header.handle_bytes = static_cast<unsigned>(identity.handle.size());
    handle.header.handle_type = identity.handleType;
    memcpy(handle.bytes(), identity.handle.constData(), handle.header.handle_bytes);
    Descriptor item(open_by_handle_at(folder, &handle.header, O_PATH | O_CLOEXEC));
    if (!item)
        *status = errno == ESTALE ? fnfErr : errno == ENOENT ? ioErr : statusFromErrno(errno);
    return item;
}

bool isUnambiguous(const FileIdentity &identity) {
    return identity.birthTime || !identity.handle.isEmpty();
}

bool isSameItem(const FileIdentity &found, const FileIdentity &wanted) {
    const bool hasHandles = !found.handle.isEmpty() && !wanted.handle.isEmpty();
    const bool isOtherHandle =
        hasHandles && (found.handleType != wanted.handleType || found.handle != wanted.handle);
    const bool hasBirths = found.birthTime && wanted.birthTime;
    if (found.inode != wanted.inode || isOtherHandle ||
        (hasBirths && found.birthTime != wanted.birthTime))
        return false;
    return hasHandles || hasBirths || (!isUnambiguous(found) && !isUnambiguous(wanted));
}

bool isSameItemAt(const QByteArray &path, const FileIdentity &found, const FileIdentity &wanted) {
    if (isSameItem(found, wanted))
        return true;
    struct statfs system = {};
    return found.device == wanted.device && statfs(path.constData(), &system) == 0 &&
           system.f_type == FUSE_SUPER_MAGIC;
}

} // namespace MWCore
