// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/item/MXFileSystemObject.h"

#include <MWCore/IconElements.h>
#include <MWCore/IconServices.h>

namespace MWCore {
namespace {

constexpr uint32_t kGenericDocument = fourCharCode("docu");
constexpr uint32_t kGenericFolder = fourCharCode("fldr");

ItemIcon::Ptr systemIcon(uint32_t type, IconBadge badge = IconBadge::None) {
    IconRef icon;
    [[maybe_unused]] const OSStatus status =
        GetIconRef(kOnSystemDisk, kSystemIconsCreator, type, &icon); // the types are known
    return ItemIcon::init(std::move(icon), badge);
}

} // namespace

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

ItemIcon::Ptr MXFileSystemObject::chosenIcon() const {
    if (!isLocal() && isLink())
        return remoteFileIconWithLink();
    if (!isLocal())
        return isDir() ? genericFolderIcon() : genericFileIcon();
    if (isLink() || isAlias())
        return fileIconWithLink();
    if (isFile() && isLocked())
        return fileIconWithLock();
    return iconForFile(pathBytes());
}

ItemIcon::Ptr MXFileSystemObject::fileIconWithLink() const {
    return iconForFile(pathBytes(), IconBadge::Alias);
}

ItemIcon::Ptr MXFileSystemObject::fileIconWithLock() const {
    return iconForFile(pathBytes(), IconBadge::Locked);
}

ItemIcon::Ptr MXFileSystemObject::remoteFileIconWithLink() {
    return systemIcon(kGenericDocument, IconBadge::Alias);
}

ItemIcon::Ptr MXFileSystemObject::genericFileIcon() {
    return systemIcon(kGenericDocument);
}

ItemIcon::Ptr MXFileSystemObject::genericFolderIcon() {
    return systemIcon(kGenericFolder);
}

} // namespace MWCore
