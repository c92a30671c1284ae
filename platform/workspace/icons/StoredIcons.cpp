// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/catalogue/FileCatalogue.h"
#include "platform/catalogue/ResourceFile.h"
#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"
#include "platform/metadata/Sidecar.h"
#include "platform/workspace/icons/IconFiles.h"
#include "platform/workspace/icons/IconServices.h"
#include "platform/workspace/icons/IconSources.h"

#include <MWCore/IconElements.h>

#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

namespace MWCore {
namespace {

/// Samba's vfs_fruit by default stores the carriage return that a Mac sends as U+F00D.
constexpr const char *kFolderIconFiles[] = {kFolderIconFile, "Icon\xEF\x80\x8D"};
constexpr QByteArrayView kHeader = "icns";

/// The item whose fork holds the icon: the file itself, or a file in the folder.
OSStatus findHolder(const FSRef &ref, FSNodeFlags flags, FSRef *holder) {
    *holder = ref;
    if (!(flags & kFSNodeIsDirectoryMask))
        return noErr;
    QByteArray path;
    OSStatus status = FSRefMakePath(ref, &path);
    if (status != noErr)
        return status;
    for (const char *const name : kFolderIconFiles) {
        status = FSPathMakeRef(pathIn(path, name), holder);
        if (status != fnfErr)
            break;
    }
    return status;
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

OSStatus customIconOf(const FSRef &ref, IconFamilyHandle *iconFamily) {
    FSCatalogInfo info;
    OSStatus status = FSGetCatalogInfo(ref, {kFSCatInfoNodeFlags, kFSCatInfoFinderInfo}, &info);
    if (status != noErr)
        return status;
    if (!info.finderInfo.flags.testFlag(kHasCustomIcon))
        return resNotFound;
    FSRef holder;
    status = findHolder(ref, info.nodeFlags, &holder);
    const auto fork = status == noErr ? ResourceFile::open(holder, fsRdPerm, &status) : nullptr;
    if (!fork)
        return status == fnfErr ? resNotFound : status;
    auto family = fork->getResource(kIconFamilyType, kCustomIconResource);
    if (!family)
        return resNotFound;
    if (!family->startsWith(kHeader))
        return mapReadErr;
    *iconFamily = *std::move(family);
    return noErr;
}

} // namespace MWCore
