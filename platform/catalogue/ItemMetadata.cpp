// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/catalogue/ItemMetadata.h"

#include "platform/metadata/StoredMetadata.h"
#include "platform/references/AliasResolution.h"

#include <bit>

namespace MWCore {
namespace {

using Part = ItemMetadata::Part;
using Parts = ItemMetadata::Parts;

constexpr Parts kFromStatx{Part::Inode, Part::DateCreated};

StoredParts storedParts(Parts parts) {
    return StoredParts()
        .setFlag(StoredPart::FinderInfo, parts.testFlag(Part::FinderInfo))
        .setFlag(StoredPart::ResourceFork, parts.testFlag(Part::ResourceFork));
}

std::size_t indexOf(Part part) {
    return static_cast<std::size_t>(std::countr_zero(static_cast<uint8_t>(part)));
}

} // namespace

ItemMetadata ItemMetadata::read(const QByteArray &path, Parts parts) {
    ItemMetadata metadata;
    const StoredParts stored = storedParts(parts);
    if (metadata.examine(path, parts) && stored)
        metadata.take(readStoredMetadata(path, stored, Sidecars::MayExist), parts);
    return metadata;
}

ItemMetadata ItemMetadata::read(const FSRef &ref, Parts parts) {
    QByteArray path;
    const OSStatus status = currentPath(ref, &path);
    if (status == noErr)
        return read(path, parts);
    ItemMetadata metadata;
    metadata.setStatus(parts, status);
    return metadata;
}

ItemMetadata ItemMetadata::readWithin(TimeBudget &timeBudget, const QByteArray &path,
                                      Sidecars sidecars, Parts parts) {
    ItemMetadata metadata;
    const StoredParts stored = storedParts(parts);
    if (metadata.examine(path, parts) && stored)
        metadata.take(readStoredMetadataWithin(timeBudget, path, stored, sidecars), parts);
    return metadata;
}

OSStatus ItemMetadata::status(Part part) const {
    return statuses_[indexOf(part)];
}

void ItemMetadata::setStatus(Parts parts, OSStatus status) {
    for (const Part part : {Part::Inode, Part::DateCreated, Part::FinderInfo, Part::ResourceFork})
        if (parts.testFlag(part))
            statuses_[indexOf(part)] = status;
}

/// Reads the parts of @p parts that come from statx(2). False if the item cannot be examined.
bool ItemMetadata::examine(const QByteArray &path, Parts parts) {
    if (!(parts & kFromStatx))
        return true;
    const OSStatus status = FSGetCatalogInfoForPath(path,
                                                    kFSCatInfoNodeFlags | kFSCatInfoCreateDate |
                                                        kFSCatInfoContentMod | kFSCatInfoDataSizes,
                                                    &info_);
    const bool isExamined = status == noErr || status == errFSOperationNotSupported;
    setStatus(isExamined ? parts & Part::Inode : parts, isExamined ? noErr : status);
    setStatus(parts & Part::DateCreated, status);
    return isExamined;
}

void ItemMetadata::take(const StoredMetadata &stored, Parts parts) {
    setStatus(parts & Part::FinderInfo, stored.finderInfoStatus);
    setStatus(parts & Part::ResourceFork, stored.resourceForkStatus);
    if (stored.finderInfoStatus == noErr)
        info_.finderInfo = stored.finderInfo;
    resourceFork_ = stored.resourceFork;
}

std::optional<UTCDateTime> ItemMetadata::dateModified() const {
    return isKnown(Part::Inode) ? std::optional(info_.contentModDate) : std::nullopt;
}

std::optional<UTCDateTime> ItemMetadata::dateCreated() const {
    return isKnown(Part::DateCreated) ? std::optional(info_.createDate) : std::nullopt;
}

bool ItemMetadata::isLocked() const {
    return isKnown(Part::Inode) && (info_.nodeFlags & kFSNodeLockedMask);
}

std::optional<FinderInfo> ItemMetadata::finderInfo() const {
    return isKnown(Part::FinderInfo) ? std::optional(info_.finderInfo) : std::nullopt;
}

std::optional<ForkSize> ItemMetadata::dataForkSize() const {
    if (!isKnown(Part::Inode))
        return std::nullopt;
    return ForkSize{static_cast<int64_t>(info_.dataLogicalSize),
                    static_cast<int64_t>(info_.dataPhysicalSize)};
}

std::optional<ForkSize> ItemMetadata::resourceForkSize() const {
    return isKnown(Part::ResourceFork) ? std::optional(resourceFork_) : std::nullopt;
}

} // namespace MWCore
