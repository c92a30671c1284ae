// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/catalogue/ItemMetadata.h"
#include "platform/files/FileSystemTypes.h"
#include "platform/files/MountTable.h"
#include "platform/formats/DesktopEntry.h"
#include "platform/launch/ItemMimeType.h"
#include "platform/launch/ItemStatus.h"
#include "platform/workspace/icons/ApplicationIcons.h"
#include "platform/workspace/icons/IconNames.h"
#include "platform/workspace/icons/IconServices.h"
#include "platform/workspace/icons/MimeIcons.h"
#include "platform/workspace/icons/UserFolders.h"
#include "platform/workspace/ResponsiveFiles.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include <sys/stat.h>

namespace MWCore {
namespace {

struct KindRow {
    mode_t kind;
    const char *names;
};
/// Items that are never opened.
constexpr KindRow kKindRows[] = {
    {S_IFIFO, "inode-fifo"},
    {S_IFSOCK, "inode-socket"},
    {S_IFBLK, "inode-blockdevice drive-harddisk"},
    {S_IFCHR, "inode-chardevice"},
    {S_IFLNK, "inode-symlink emblem-symbolic-link"},
};

/// The types of file systems on discs.
constexpr QByteArrayView kOpticalTypes[] = {"iso9660", "udf"};
/// Those that are usual on removable media.
constexpr QByteArrayView kRemovableTypes[] = {"exfat", "vfat"};

bool isOneOf(std::span<const QByteArrayView> types, const QByteArray &type) {
    return std::ranges::find(types, type) != types.end();
}

const char *volumeIcon(const QByteArray &path) {
    const std::vector<Mount> mounts = mountTable();
    const Mount *const mount = mountOf(path, mounts);
    if (!mount || path == "/")
        return "drive-harddisk";
    if (isOneOf(kOpticalTypes, mount->type))
        return "media-optical drive-optical";
    if (isOneOf(kRemovableTypes, mount->type))
        return "drive-removable-media drive-harddisk";
    return isLocalFileSystem(mount->type) ? "drive-harddisk"
                                          : "folder-remote network-server folder";
}

IconRef folderIcon(const QByteArray &path, const ItemStatus &item) {
    if (auto application = applicationFolderIcon(path))
        return *std::move(application);
    if (const char *const names = userFolderIcon(path))
        return themeIcon(names, kFolderDrawing);
    return themeIcon(item.isMountPoint ? volumeIcon(path) : "folder inode-directory",
                     kFolderDrawing);
}

IconRef fileIcon(const QByteArray &path) {
    if (path.endsWith(kDesktopEntrySuffix))
        if (auto named = desktopEntryIcon(path))
            return *std::move(named);
    return mimeTypeIcon(mimeTypeOfFile(path));
}

/// The item to which a link leads, unless its file system might not answer; else the link itself.
QByteArray followed(const QByteArray &path) {
    QByteArray real;
    return ResponsiveFiles(path).open(path, &real) ? real : path;
}

/// Whether the item's Finder flags say so. Items other than files and folders have none.
bool hasCustomIcon(const QByteArray &path, const ItemStatus &item) {
    if (!S_ISREG(item.mode) && !S_ISDIR(item.mode))
        return false;
    const auto info = ItemMetadata::read(path, ItemMetadata::Part::FinderInfo).finderInfo();
    return info && info->flags.testFlag(kHasCustomIcon);
}

IconRef iconOf(const QByteArray &path, const ItemStatus &item) {
    if (S_ISREG(item.mode))
        return fileIcon(path);
    if (S_ISDIR(item.mode))
        return folderIcon(path, item);
    const auto *const row = std::ranges::find(kKindRows, item.mode & S_IFMT, &KindRow::kind);
    return themeIcon(row == std::end(kKindRows) ? "unknown" : row->names, kFileDrawing);
}

} // namespace

OSStatus GetIconRefFromFileInfo(const FSRef &ref, IconRef *iconRef) {
    QByteArray path;
    if (const OSStatus status = FSRefMakePath(ref, &path); status != noErr)
        return status;
    ItemStatus item = itemStatus(path);
    if (S_ISLNK(item.mode)) {
        path = followed(path);
        item = itemStatus(path);
    }
    if (item.status != noErr)
        return item.status;
    *iconRef = iconOf(path, item);
    if (hasCustomIcon(path, item))
        iconRef->customIconOf = path;
    return noErr;
}

} // namespace MWCore
