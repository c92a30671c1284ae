// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/aliases/AliasFollowing.h"
#include "platform/files/CurrentMounts.h"
#include "platform/files/FileSystemTypes.h"
#include "platform/workspace/icons/IconNames.h"
#include "platform/workspace/icons/IconSources.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <span>

namespace MWCore {
namespace {

/// The types of file systems on discs.
constexpr QByteArrayView kOpticalTypes[] = {"iso9660", "udf"};
/// Those that are usual on removable media, also if a program (ntfs-3g) serves them from a disk.
constexpr QByteArrayView kRemovableTypes[] = {"exfat", "fuseblk", "vfat"};

bool isOneOf(std::span<const QByteArrayView> types, const QByteArray &type) {
    return std::ranges::find(types, type) != types.end();
}

const char *iconOf(const Mount &mount) {
    if (isOneOf(kOpticalTypes, mount.type))
        return "media-optical drive-optical";
    if (isOneOf(kRemovableTypes, mount.type))
        return "drive-removable-media drive-harddisk";
    return isLocalFileSystem(mount.type) ? "drive-harddisk" : "folder-remote network-server folder";
}

/// The mount whose root the item is; nullopt if it is not in the mount table.
std::optional<Mount> mountOfVolume(const QByteArray &path) {
    const auto mounts = currentMounts();
    const auto id = mountAt(path);
    const auto mount = std::ranges::find(*mounts, id.value_or(0), &Mount::id);
    return id && mount != mounts->end() ? std::optional(*mount) : std::nullopt;
}

} // namespace

bool mayNotAnswer(const IconItem &item) {
    const auto mount = item.status.isMountPoint ? mountOfVolume(item.path) : std::nullopt;
    return mount && mount->mountPoint != "/" && !isLocalFileSystem(mount->type);
}

void addVolumeIcon(const IconItem &item, IconRef &icon) {
    if (!item.status.isMountPoint)
        return;
    const auto mount = item.path == "/" ? std::nullopt : mountOfVolume(item.path);
    icon = themeIcon(mount ? iconOf(*mount) : "drive-harddisk", kFolderDrawing);
}

} // namespace MWCore
