// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/launch/LaunchServices.h"

#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"
#include "platform/formats/DesktopEntry.h"
#include "platform/launch/ApplicationFolder.h"
#include "platform/launch/ItemStatus.h"
#include "platform/launch/PackageExtensions.h"
#include "platform/metadata/FinderInfo.h"

#include <algorithm>

namespace MWCore {
namespace {

constexpr int64_t kAppImageStart = 11; ///< bytes by which an AppImage is recognised

/// An AppImage has "AI" and its type in the unused bytes of its ELF identification. @p start is the
/// file's first kAppImageStart bytes, or the whole file if it is shorter.
bool isAppImage(QByteArrayView start) {
    return start.size() == kAppImageStart &&
           start.startsWith("\x7F"
                            "ELF") &&
           (start.endsWith("AI\x01") || start.endsWith("AI\x02"));
}

bool startsApplication(const QByteArray &entry) {
    return DesktopEntry(entry).value(DesktopEntry::kMainGroup, "Type") == u"Application";
}

} // namespace

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
    constexpr int64_t kEntryStart = 65'536; // the type is near the top
    const bool isEntry = path.endsWith(".desktop");
    OSStatus status = noErr;
    const Descriptor file = openRegularFile(path, FinalLink::Keep, &status);
    const auto start =
        file ? readAt(file.number(), 0, isEntry ? kEntryStart : kAppImageStart, &status)
             : std::nullopt;
    if (!start)
        return false;
    const QByteArrayView identification =
        QByteArrayView(*start).first(std::min<qsizetype>(start->size(), kAppImageStart));
    return isAppImage(identification) || (isEntry && startsApplication(*start));
}

} // namespace MWCore
