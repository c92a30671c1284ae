// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/references/RecordedFileSystem.h"

#include "platform/files/FileSystemTypes.h"
#include "platform/files/ItemIdentity.h"
#include "platform/files/PathParts.h"

#include <algorithm>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/vfs.h>

namespace MWCore {
namespace {

/// Recognises the recorded file system among the mounts.
class Recognition {
public:
    Recognition(const AliasRecord &record, const MountGuard &guard)
        : record_(record), guard_(guard),
          mountPoint_(record.realPath.first(std::max<qsizetype>(record.mountPointLength, 0))) {}

    /// Judged by the mount table alone.
    [[nodiscard]] bool matchesTable(const Mount &mount) const {
        return mount.type == record_.fileSystemType && mount.source == record_.source &&
               (!isFuse(mount.type) || isAtRecordedPlace(mount) ||
                mount.device == record_.identity.device);
    }

    [[nodiscard]] bool matches(const Mount &mount) const {
        if (!isLocalFileSystem(mount.type))
            return mayBlock() ? matchesTable(mount) && guard_.isReachable(mount)
                              : mount.type.isEmpty() && matchesOnDisk(mount);
        const bool isOfType =
            record_.fileSystemType.isEmpty() || mount.type == record_.fileSystemType;
        return isOfType && matchesOnDisk(mount);
    }

private:
    [[nodiscard]] bool mayBlock() const {
        return !record_.fileSystemType.isEmpty() && !isLocalFileSystem(record_.fileSystemType);
    }

    [[nodiscard]] bool isAtRecordedPlace(const Mount &mount) const {
        return mount.mountPoint == mountPoint_;
    }

    [[nodiscard]] bool matchesOnDisk(const Mount &mount) const {
        if (!guard_.isReachable(mount))
            return false;
        const Descriptor top(
            open(mount.mountPoint.constData(), O_PATH | O_NOFOLLOW | O_DIRECTORY | O_CLOEXEC));
        return top && isOnMount(top.number(), mount) && hasRecordedId(mount, top) &&
               (isUnambiguous(record_.identity) || hasRecordedRoot(top.number()));
    }

    [[nodiscard]] bool hasRecordedId(const Mount &mount, const Descriptor &top) const {
        const uint64_t number = fileSystemOf(top.number());
        if (number != 0 && number == record_.fileSystem)
            return true;
        if (number != 0 && number != mount.device)
            return mount.type == "btrfs" && record_.fileSystem != 0 &&
                   fileSystemOf(deepestFolder(mount, top).number()) == record_.fileSystem;
        // The id is only a device number, which may change when the system restarts.
        const bool isSameSource = record_.source.isEmpty() || mount.source == record_.source;
        return isSameSource && (isAtRecordedPlace(mount) ||
                                (number == 0 && mount.device == record_.identity.device));
    }

    /// Simple file systems take inode numbers, including that of their root, from one counter.
    [[nodiscard]] bool hasRecordedRoot(int top) const {
        struct stat root = {};
        if (fstat(top, &root) != 0)
            return false;
        const std::size_t depth = nameCount(mountPoint_);
        if (record_.realPath == mountPoint_)
            return root.st_ino == record_.identity.inode;
        return record_.ancestors.empty() ||
               (depth < record_.ancestors.size() && record_.ancestors[depth] == root.st_ino);
    }

    /// The deepest existing folder on the stored path, because a subvolume has an id of its own.
    [[nodiscard]] Descriptor deepestFolder(const Mount &mount, const Descriptor &top) const {
        constexpr int kFlags = O_PATH | O_NOFOLLOW | O_DIRECTORY | O_CLOEXEC;
        Descriptor deepest(openat(top.number(), ".", kFlags));
        QByteArray path = mount.mountPoint;
        for (const QByteArray &name : namesBelowMountPoint(record_)) {
            path = pathIn(path, name);
            Descriptor next(guard_.isMountPoint(path)
                                ? -1
                                : openat(deepest.number(), name.constData(), kFlags));
            if (!next)
                break;
            deepest = std::move(next);
        }
        return deepest;
    }

    const AliasRecord &record_;
    const MountGuard &guard_;
    QByteArray mountPoint_; ///< the recorded one
};

} // namespace

uint64_t fileSystemOf(int item) {
    struct statfs system = {};
    static_assert(sizeof system.f_fsid == sizeof(uint64_t));
    uint64_t number = 0;
    if (fstatfs(item, &system) == 0)
        memcpy(&number, &system.f_fsid, sizeof number);
    return number;
}

void allowRecorded(const AliasRecord &record, MountGuard &guard) {
    const Recognition recognition(record, guard);
    // An older record has no type: the item may well be where its path leads now.
    if (record.fileSystemType.isEmpty())
        for (const Mount *const mount : mountsAlongPath(record.realPath, guard.mounts()))
            guard.allow(mount->id);
    else if (!isLocalFileSystem(record.fileSystemType))
        for (const Mount &mount : guard.mounts())
            if (recognition.matchesTable(mount))
                guard.allow(mount.id);
}

std::vector<const Mount *> mountsOfRecorded(const AliasRecord &record, const MountGuard &guard) {
    const Recognition recognition(record, guard);
    std::vector<const Mount *> found;
    const Mount *const usual = mountOf(record.realPath, guard.mounts());
    if (usual && recognition.matches(*usual))
        found.push_back(usual);
    for (const Mount &mount : guard.mounts())
        if (&mount != usual && recognition.matches(mount))
            found.push_back(&mount);
    return found;
}

QList<QByteArray> namesBelowMountPoint(const AliasRecord &record) {
    const QList<QByteArray> names = namesOf(record.realPath.sliced(record.mountPointLength));
    const bool isWay = std::ranges::none_of(names, isDots);
    return isWay ? names : QList<QByteArray>();
}

} // namespace MWCore
