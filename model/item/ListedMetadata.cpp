// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/item/ListedMetadata.h"

#include "platform/files/PathParts.h"
#include "platform/metadata/Sidecar.h"

namespace MWCore {

ListedMetadata::ListedMetadata(const MXFileSystemObject &folder, TimeBudget &timeBudget)
    : timeBudget_(timeBudget), sidecars_(std::make_unique<SidecarNames>()) {
    // Sidecars are files, so the subfolders' names need no check.
    for (int32_t index = 0; index < folder.fileCount(); ++index)
        sidecars_->add(mfs_fso_get_subitem_at_index(folder.cstruct(), index, MFS_FILES)->name);
}

ListedMetadata::~ListedMetadata() = default;

ItemMetadata ListedMetadata::read(const MXFileSystemObject &child, ItemMetadata::Parts parts) {
    if (!child.isLocal())
        return {};
    const QByteArray path = child.pathBytes();
    return ItemMetadata::readWithin(timeBudget_, path, sidecars_->of(PathParts(path).name), parts);
}

} // namespace MWCore
