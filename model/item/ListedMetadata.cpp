// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/item/ListedMetadata.h"

#include "platform/files/PathParts.h"
#include "platform/metadata/Sidecar.h"

namespace MWCore {

ListedMetadata::ListedMetadata(const MXFileSystemObject &folder, TimeBudget &timeBudget)
    : timeBudget_(timeBudget) {
    // Sidecars are files, so the subfolders' names need no check.
    for (int32_t index = 0; index < folder.fileCount(); ++index) {
        const QByteArrayView name =
            mfs_fso_get_subitem_at_index(folder.cstruct(), index, MFS_FILES)->name;
        if (isSidecarName(name))
            sidecars_ += name.toByteArray();
    }
}

ItemMetadata ListedMetadata::read(const MXFileSystemObject &child, ItemMetadata::Parts parts) {
    if (!child.isLocal())
        return {};
    const QByteArray path = child.pathBytes();
    const bool hasSidecar =
        !sidecars_.isEmpty() && sidecars_.contains(sidecarName(PathParts(path).name));
    return ItemMetadata::readWithin(timeBudget_, path,
                                    hasSidecar ? Sidecars::MayExist : Sidecars::Absent, parts);
}

} // namespace MWCore
