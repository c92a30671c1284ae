// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/ItemIcons.h"

#include "platform/catalogue/ItemMetadata.h"
#include "platform/files/PathParts.h"
#include "platform/launch/ItemMimeType.h"
#include "platform/metadata/Sidecar.h"
#include "platform/references/AliasResolution.h"
#include "platform/workspace/icons/IconNames.h"
#include "platform/workspace/icons/IconSources.h"
#include "platform/workspace/icons/MimeIcons.h"
#include "platform/workspace/ResponsiveFiles.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

#include <fcntl.h>
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

/// The icon of the item's kind or type alone, which every theme has.
IconRef kindIcon(const IconItem &item) {
    if (S_ISREG(item.status.mode))
        return mimeTypeIcon(mimeTypeOfFile(item.path));
    if (S_ISDIR(item.status.mode))
        return themeIcon("folder inode-directory", kFolderDrawing);
    const auto *const row = std::ranges::find(kKindRows, item.status.mode & S_IFMT, &KindRow::kind);
    return themeIcon(row == std::end(kKindRows) ? "unknown" : row->names, kFileDrawing);
}

using IconSource = void (*)(const IconItem &item, IconRef &icon);

/// What may replace that icon, the most important source last.
constexpr IconSource kFileSources[] = {
    addThumbnail,        addAppImageIcon, addAliasTargetIcon,
    addDesktopEntryIcon, addLookedUpIcon, addCustomIcon,
};
constexpr IconSource kFolderSources[] = {
    addVolumeIcon,   addUserFolderIcon,    addApplicationIcon,
    addLookedUpIcon, addDirectoryFileIcon, addCustomIcon,
};

/// Those that do not look into the folder.
constexpr IconSource kOutsideSources[] = {addVolumeIcon, addUserFolderIcon, addLookedUpIcon};

/// Items other than files and folders are never opened.
std::span<const IconSource> sourcesOf(const IconItem &item) {
    if (S_ISREG(item.status.mode))
        return kFileSources;
    if (!S_ISDIR(item.status.mode))
        return {};
    return item.folder ? std::span<const IconSource>(kFolderSources) : kOutsideSources;
}

/// Opens the folder, so that its owner cannot put a link to somewhere else in its place any more.
/// Nothing is mounted by that (O_DIRECTORY would).
Descriptor folderOf(const IconItem &item) {
    const bool mayLook = S_ISDIR(item.status.mode) && !mayNotAnswer(item);
    constexpr int kFlags = O_PATH | O_NOFOLLOW | O_CLOEXEC;
    return Descriptor(mayLook ? open(item.path.constData(), kFlags) : -1);
}

bool hasSidecar(const QByteArray &path) {
    const PathParts parts(path);
    const QByteArray sidecar = parts.beside(sidecarName(parts.name));
    return faccessat(AT_FDCWD, sidecar.constData(), F_OK, AT_SYMLINK_NOFOLLOW) == 0;
}

/// Whether an item that had no Finder flags in that state has none now.
bool isStillUnflagged(const IconItem &item, uint64_t unflaggedState) {
    return item.status.inodeState == unflaggedState && !hasSidecar(item.path);
}

FinderFlags flagsOf(const IconItem &item, uint64_t unflaggedState) {
    const bool mayLook = S_ISREG(item.status.mode) || item.folder;
    if (!mayLook || isStillUnflagged(item, unflaggedState))
        return {};
    const auto info = ItemMetadata::read(item.path, ItemMetadata::Part::FinderInfo).finderInfo();
    return info ? info->flags : FinderFlags();
}

/// The item to which a link leads, unless its file system might not answer; else the link itself.
QByteArray followed(const QByteArray &path) {
    QByteArray real;
    return ResponsiveFiles(path).open(path, &real) ? real : path;
}

/// A "." or ".." at the end is replaced by the folder's own name, which sidecars need.
QByteArray namedPath(const QByteArray &path) {
    const QByteArray absolute = absolutePath(path);
    const QByteArray real =
        isDots(PathParts(absolute).name) ? withoutLinks(absolute) : QByteArray();
    return real.isEmpty() ? absolute : real;
}

} // namespace

FoundIcon findItemIcon(const QByteArray &path, ItemRole role, uint64_t unflaggedState) {
    IconItem item = {namedPath(path), {}, {}, {}, role, {}};
    item.status = itemStatus(item.path);
    FoundIcon found = {item.status.status, item.status.isLocked, {}};
    if (S_ISLNK(item.status.mode)) {
        item.link = item.path;
        item.path = followed(item.path);
        item.status = itemStatus(item.path);
        found.status = item.status.status;
        unflaggedState = 0;
    }
    if (found.status != noErr)
        return found;
    item.folder = folderOf(item);
    item.flags = flagsOf(item, unflaggedState);
    found.icon = kindIcon(item);
    for (const IconSource add : sourcesOf(item))
        add(item, found.icon);
    return found;
}

OSStatus GetIconRefFromFileInfo(const FSRef &ref, IconRef *iconRef) {
    QByteArray path;
    if (const OSStatus status = FSRefMakePath(ref, &path); status != noErr)
        return status;
    FoundIcon found = findItemIcon(path);
    if (found.status == noErr)
        *iconRef = std::move(found.icon);
    return found.status;
}

} // namespace MWCore
