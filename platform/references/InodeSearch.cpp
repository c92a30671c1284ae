// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/references/InodeSearch.h"

#include "core/private/Descriptor.h"
#include "platform/files/PathParts.h"

#include <cerrno>
#include <cstring>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/sysmacros.h>

namespace MWCore {
namespace {

constexpr int kDeepest = 200; ///< each level holds one open folder
constexpr std::size_t kBlockLength = 65536;

Descriptor openFolder(int parent, const char *path) {
    return Descriptor(openat(parent, path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

/// The mount that an item is on, or the device where the kernel does not tell (before 5.8), without
/// opening it or setting off an automount; 0 when it cannot be examined.
uint64_t mountIdOf(int parent, const char *path) {
    struct statx item = {};
    constexpr int kFlags =
        AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_EMPTY_PATH | AT_STATX_DONT_SYNC;
    if (statx(parent, path, kFlags, STATX_MNT_ID, &item) != 0)
        return 0;
    return item.stx_mask & STATX_MNT_ID ? item.stx_mnt_id
                                        : makedev(item.stx_dev_major, item.stx_dev_minor);
}

bool isDots(const char *name) {
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

/// Whether an entry is a folder; asked of the item only where the file system does not say.
bool isFolder(int parent, const dirent64 &entry) {
    struct stat item = {};
    if (entry.d_type != DT_UNKNOWN)
        return entry.d_type == DT_DIR;
    return fstatat(parent, entry.d_name, &item, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(item.st_mode);
}

} // namespace

/// Names one after the other, each with a NUL.
struct InodeSearch::Names {
    QByteArray bytes;
};

InodeSearch::InodeSearch(const FileIdentity &wanted, SearchLimits limits)
    : wanted_(wanted), limits_(limits), block_(std::make_unique<char[]>(kBlockLength)) {}

std::optional<QByteArray> InodeSearch::inFolder(const QByteArray &folder) {
    const Descriptor opened = openFolder(AT_FDCWD, folder.constData());
    return opened && scan(opened.number(), folder, nullptr) ? std::optional(found_) : std::nullopt;
}

std::optional<QByteArray> InodeSearch::below(const QByteArray &folder) {
    const Descriptor opened = openFolder(AT_FDCWD, folder.constData());
    if (!opened)
        return std::nullopt;
    mount_ = mountIdOf(opened.number(), "");
    return descend(opened.number(), folder, 0) ? std::optional(found_) : std::nullopt;
}

/// Reads one folder with the kernel's own call, since a DIR would be allocated for each.
bool InodeSearch::scan(int folder, const QByteArray &path, Names *subfolders) {
    long length = 0;
    while (mayGoOn() &&
           (length = syscall(SYS_getdents64, folder, block_.get(), kBlockLength)) > 0) {
        for (long at = 0; at < length;) {
            const auto *const entry = reinterpret_cast<const dirent64 *>(block_.get() + at);
            at += entry->d_reclen;
            --limits_.entries;
            if (isDots(entry->d_name))
                continue;
            if (entry->d_ino == wanted_.inode && isIt(folder, entry->d_name)) {
                found_ = pathIn(path, entry->d_name);
                return true;
            }
            if (subfolders && isFolder(folder, *entry))
                subfolders->bytes.append(entry->d_name,
                                         static_cast<qsizetype>(std::strlen(entry->d_name)) + 1);
        }
    }
    // A folder that was removed meanwhile has no more names; anything else leaves some unseen.
    if (length < 0 && errno != ENOENT && readFailure_ == noErr)
        readFailure_ = statusFromErrno(errno);
    return false;
}

bool InodeSearch::descend(int folder, const QByteArray &path, int depth) {
    Names subfolders;
    if (scan(folder, path, &subfolders))
        return true;
    if (depth == kDeepest) {
        leftOut_ = leftOut_ || !subfolders.bytes.isEmpty();
        return false;
    }
    const char *const end = subfolders.bytes.constData() + subfolders.bytes.size();
    for (const char *name = subfolders.bytes.constData(); name < end;
         name += std::strlen(name) + 1) {
        if (mountIdOf(folder, name) != mount_)
            continue;
        const Descriptor inner = openFolder(folder, name);
        if (inner && descend(inner.number(), pathIn(path, name), depth + 1))
            return true;
        if (status_ != noErr)
            return false;
    }
    return false;
}

bool InodeSearch::mayGoOn() {
    if (limits_.cancelled && limits_.cancelled->load(std::memory_order_relaxed))
        status_ = userCanceledErr;
    else if (limits_.entries <= 0)
        status_ = fileBoundsErr;
    return status_ == noErr;
}

bool InodeSearch::isIt(int folder, const char *name) const {
    OSStatus status = noErr;
    const auto identity = identityOf(folder, name, &status);
    return identity && isSameItem(*identity, wanted_);
}

} // namespace MWCore
