// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/references/InodeSearch.h"

#include "core/private/Descriptor.h"
#include "platform/files/FolderBlock.h"
#include "platform/files/ItemIdentity.h"
#include "platform/files/MountTable.h"
#include "platform/files/PathParts.h"

#include <cerrno>
#include <cstring>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace MWCore {
namespace {

constexpr int kDeepest = 200; ///< each level holds one open folder

Descriptor openFolder(int parent, const char *path) {
    return Descriptor(openat(parent, path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
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
    : wanted_(wanted), limits_(limits) {}

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

bool InodeSearch::scan(int folder, const QByteArray &path, Names *subfolders) {
    auto outcome = FolderBlock::Outcome::MoreLeft;
    while (outcome == FolderBlock::Outcome::MoreLeft && mayGoOn()) {
        outcome = block_.fill(folder);
        const int error = errno;
        for (const dirent64 &entry : block_) {
            --limits_.entries;
            if (entry.d_ino == wanted_.inode && isIt(folder, entry.d_name)) {
                found_ = pathIn(path, entry.d_name);
                return true;
            }
            if (subfolders && isFolder(folder, entry))
                subfolders->bytes.append(entry.d_name,
                                         static_cast<qsizetype>(std::strlen(entry.d_name)) + 1);
        }
        // A folder that was removed meanwhile has no more names; anything else leaves some unseen.
        if (outcome == FolderBlock::Outcome::Failed && error != ENOENT && readFailure_ == noErr)
            readFailure_ = statusFromErrno(error);
    }
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
