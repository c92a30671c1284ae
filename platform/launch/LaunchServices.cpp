// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/launch/LaunchServices.h"

#include "platform/aliases/AliasFollowing.h"
#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"
#include "platform/formats/DesktopEntry.h"
#include "platform/launch/AppImage.h"
#include "platform/launch/ApplicationFolder.h"
#include "platform/launch/ItemStatus.h"
#include "platform/launch/PackageExtensions.h"
#include "platform/metadata/FinderInfo.h"

namespace MWCore {

OSStatus LSCopyItemInfoForPath(const QByteArray &path, FinderFlags finderFlags,
                               LSItemInfoFlags *flags) {
    const ItemStatus item = itemStatus(path);
    *flags = {};
    if (!S_ISDIR(item.mode))
        return item.status;
    if (isApplicationFolder(path))
        *flags |= kLSItemInfoIsApplication | kLSItemInfoIsPackage;
    if (hasPackageExtension(PathParts(path).name) || finderFlags.testFlag(kHasBundle))
        *flags |= kLSItemInfoIsPackage;
    if (item.isMountPoint)
        *flags |= kLSItemInfoIsVolume;
    return noErr;
}

bool isPlainFileApplication(const QByteArray &path) {
    const bool isEntry = path.endsWith(kDesktopEntrySuffix);
    OSStatus status = noErr;
    const auto start = readStartOf(path, isEntry ? kLongestDesktopEntry : kAppImageStart,
                                   FinalLink::Keep, &status);
    return start && (isAppImage(*start) || (isEntry && contentOf(*start).startsApplication));
}

} // namespace MWCore
