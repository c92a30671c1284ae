// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/item/IconKind.h"
#include "model/item/MXFileSystemObject.h"

namespace MWCore {

bool MXFileSystemObject::hasCustomIcon() const {
    const auto info = catalogInfo(kFSCatInfoFinderInfo);
    return info && info->finderInfo.flags.testFlag(kHasCustomIcon);
}

ItemIcon::Ptr MXFileSystemObject::iconForFSOUsingCached(bool useCached) const {
    if (useCached && myCachedImage_)
        return myCachedImage_;
    ItemIcon::Ptr icon = chosenIcon();
    if (useCached)
        myCachedImage_ = icon;
    return icon;
}

/// Asks nothing of the system.
ItemIconFacts MXFileSystemObject::iconFacts() const {
    return {.kind = iconKindOf(*this),
            .isLocal = isLocal(),
            .path = isLocal() ? pathBytes() : QByteArray(),
            .unflaggedState = unflaggedState_};
}

ItemIcon::Ptr MXFileSystemObject::chosenIcon() const {
    OSStatus lockStatus = noErr;
    ItemIcon::Ptr icon = iconOf(iconFacts(), &lockStatus);
    if (lockStatus != noErr)
        recordCarbonError(lockStatus); // as isLocked() does
    return icon;
}

ItemIcon::Ptr MXFileSystemObject::fileIconWithLink() const {
    return iconForFile(pathBytes(), IconBadge::Alias);
}

ItemIcon::Ptr MXFileSystemObject::fileIconWithLock() const {
    return iconForFile(pathBytes(), IconBadge::Locked);
}

ItemIcon::Ptr MXFileSystemObject::remoteFileIconWithLink() {
    return genericIcon(ItemIconFacts::Kind::Link);
}

ItemIcon::Ptr MXFileSystemObject::genericFileIcon() {
    return genericIcon(ItemIconFacts::Kind::File);
}

ItemIcon::Ptr MXFileSystemObject::genericFolderIcon() {
    return genericIcon(ItemIconFacts::Kind::Folder);
}

} // namespace MWCore
