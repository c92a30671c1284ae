// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/references/InodeSearch.h"

#include "core/posix/Descriptor.h"
#include "platform/files/ItemIdentity.h"
#include "platform/files/MountTable.h"
#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"

#include <cerrno>
#include <cstring>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace MWCore {
namespace {

constexpr int kDeepest = 200; ///< levels; each keeps one folder open

/// Whether an entry is a folder. Examines the item only if the file system does not report types.
bool isFolder(int parent, const dirent64 &entry) {
    struct stat item = {};
    if (entry.d_type != DT_UNKNOWN)
        return entry.d_type == DT_DIR;
    return fstatat(parent, entry.d_name, &item, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(item.st_mode);
}

} // namespace

/// Names, each ended by a NUL.
struct InodeSearch::Names {
    QByteArray bytes;
};

InodeSearch::InodeSearch(const FileIdentity &wanted, const std::vector<Mount> &mounts,
                         SearchBudget &budget)
    : wanted_(wanted), mounts_(mounts), budget_(budget) {}

std::optional<QByteArray> InodeSearch::inFolder(int folder, const QByteArray &path) {
    stayOnMountOf(folder, path);
    return scan(folder, path, nullptr) ? std::optional(found_) : std::nullopt;
}

std::optional<QByteArray> InodeSearch::subfolderOf(int folder, const QByteArray &path) {
    match_ = Match::FolderByNumber;
    return inFolder(folder, path);
}

std::optional<QByteArray> InodeSearch::below(int folder, const QByteArray &path) {
    stayOnMountOf(folder, path);
    return descend(folder, path, 0) ? std::optional(pathIn(foundIn_, found_)) : std::nullopt;
}

void InodeSearch::stayOnMountOf(int folder, const QByteArray &path) {
    mount_ = mountIdOf(folder, "");
    for (const Mount &mount : mounts_)
        if (mount.mountPoint != path && isAtOrBelow(mount.mountPoint, path))
            mountPoints_.push_back(mount.mountPoint);
}

/// The names of the mount points directly in the folder.
QList<QByteArray> InodeSearch::mountPointsIn(const QByteArray &path) const {
    QList<QByteArray> names;
    for (const QByteArray &mountPoint : mountPoints_)
        if (const PathParts parts(mountPoint); parts.parent == path)
            names.push_back(parts.name);
    return names;
}

bool InodeSearch::scan(int folder, const QByteArray &path, Names *subfolders) {
    const QList<QByteArray> untouched = mountPointsIn(path);
    auto outcome = FolderBlock::Outcome::MoreLeft;
    while (outcome == FolderBlock::Outcome::MoreLeft && budget_.mayReadNames()) {
        outcome = block_.fill(folder);
        for (const dirent64 &entry : block_) {
            budget_.countName();
            if (!untouched.isEmpty() && untouched.contains(QByteArrayView(entry.d_name)))
                continue;
            if (entry.d_ino == wanted_.inode && isWanted(folder, entry)) {
                found_ = entry.d_name;
                foundIn_ = path;
                return true;
            }
            if (subfolders && isFolder(folder, entry))
                subfolders->bytes.append(entry.d_name,
                                         static_cast<qsizetype>(std::strlen(entry.d_name)) + 1);
        }
        // A folder removed meanwhile has no more names; after any other error some may be missing.
        if (outcome == FolderBlock::Outcome::Failed)
            budget_.markIncomplete(block_.status());
    }
    return false;
}

bool InodeSearch::descend(int folder, const QByteArray &path, int depth) {
    Names subfolders;
    if (scan(folder, path, &subfolders))
        return true;
    if (depth == kDeepest) {
        if (!subfolders.bytes.isEmpty())
            budget_.markIncomplete(fileBoundsErr);
        return false;
    }
    const char *const end = subfolders.bytes.constData() + subfolders.bytes.size();
    for (const char *name = subfolders.bytes.constData(); name < end && !budget_.hasStopped();
         name += std::strlen(name) + 1) {
        if (mountIdOf(folder, name) != mount_)
            continue;
        const Descriptor inner = openFolderAt(folder, name, FinalLink::Keep);
        if (inner && descend(inner.number(), pathIn(path, name), depth + 1))
            return true;
    }
    return false;
}

/// Reads nothing but the mount id of an item on which something was mounted meanwhile.
bool InodeSearch::isWanted(int folder, const dirent64 &entry) const {
    if (mountIdOf(folder, entry.d_name) != mount_)
        return false;
    if (match_ == Match::FolderByNumber)
        return isFolder(folder, entry);
    OSStatus status = noErr;
    const auto identity = identityOf(folder, entry.d_name, &status);
    return identity && isSameItem(*identity, wanted_);
}

} // namespace MWCore
