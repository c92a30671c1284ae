// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"
#include "platform/formats/ResourceMap.h"
#include "platform/launch/ItemStatus.h"
#include "platform/metadata/MetadataStore.h"
#include "platform/metadata/Sidecar.h"
#include "platform/references/AliasResolution.h"
#include "platform/workspace/icons/IconFiles.h"
#include "platform/workspace/icons/IconServices.h"
#include "platform/workspace/icons/IconSources.h"

#include <MWCore/IconElements.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace MWCore {
namespace {

/// Samba's vfs_fruit by default stores the carriage return that a Mac sends as U+F00D.
constexpr const char *kFolderIconFiles[] = {kFolderIconFile, "Icon\xEF\x80\x8D"};
constexpr QByteArrayView kHeader = "icns";

/// The file in the folder whose fork holds the icon of the folder.
QByteArray iconFileIn(const QByteArray &folder) {
    const auto isThere = [&folder](const char *name) {
        return faccessat(AT_FDCWD, pathIn(folder, name).constData(), F_OK, AT_SYMLINK_NOFOLLOW) ==
               0;
    };
    const auto *const name = std::ranges::find_if(kFolderIconFiles, isThere);
    return pathIn(folder, name == std::end(kFolderIconFiles) ? kFolderIconFile : *name);
}

OSStatus iconInFork(const QByteArray &path, IconFamilyHandle *iconFamily) {
    OSStatus status = noErr;
    const auto fork = readResourceFork(path, &status);
    if (!fork)
        return status == fnfErr ? resNotFound : status;
    const auto map = ResourceMap::parse(*fork);
    const Resource *const icon = map ? map->find(kIconFamilyType, kCustomIconResource) : nullptr;
    if (map && !icon)
        return resNotFound;
    if (!icon || !icon->data.startsWith(kHeader))
        return mapReadErr;
    *iconFamily = icon->data;
    return noErr;
}

/// Makes the version of @p icon depend on the fork of the item at @p path, relative to @p folder,
/// which is stored with the item or beside it.
void addForkVersion(IconRef &icon, int folder, const QByteArray &path) {
    const PathParts parts(path);
    for (const QByteArray &holder : {path, parts.beside(sidecarName(parts.name))})
        if (struct stat item = {};
            fstatat(folder, holder.constData(), &item, AT_SYMLINK_NOFOLLOW) == 0)
            addVersion(icon, versionOf(item));
}

} // namespace

void addCustomIcon(const IconItem &item, IconRef &icon) {
    if (!item.flags.testFlag(kHasCustomIcon))
        return;
    icon.customIconOf = item.path;
    if (S_ISREG(item.status.mode))
        return addForkVersion(icon, AT_FDCWD, item.path);
    if (item.status.isMountPoint)
        if (const auto file = FolderFiles(item.path).find(".VolumeIcon.icns"))
            setFile(icon, *file);
    for (const char *const name : kFolderIconFiles)
        addForkVersion(icon, item.folder.number(), name);
}

OSStatus ReadIconFromFSRef(const FSRef &ref, IconFamilyHandle *iconFamily) {
    QByteArray path;
    OSStatus status = FSRefMakePath(ref, &path);
    if (status != noErr)
        return status;
    auto bytes = readRegularFile(path, kLongestIconFile, FinalLink::Follow, &status);
    if (!bytes)
        return status;
    if (!bytes->startsWith(kHeader))
        return mapReadErr;
    *iconFamily = *std::move(bytes);
    return noErr;
}

OSStatus customIconAt(const QByteArray &path, IconFamilyHandle *iconFamily) {
    const ItemStatus item = itemStatus(path);
    FinderInfo info;
    const OSStatus status = item.status == noErr ? readFinderInfo(path, &info) : item.status;
    if (status != noErr)
        return status;
    if (!info.flags.testFlag(kHasCustomIcon))
        return resNotFound;
    return iconInFork(S_ISDIR(item.mode) ? iconFileIn(path) : path, iconFamily);
}

OSStatus customIconOf(const FSRef &ref, IconFamilyHandle *iconFamily) {
    QByteArray path;
    const OSStatus status = currentPath(ref, &path);
    return status == noErr ? customIconAt(path, iconFamily) : status;
}

} // namespace MWCore
