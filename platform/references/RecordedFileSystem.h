// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/formats/AliasRecord.h"
#include "platform/references/MountGuard.h"

#include <cstdint>
#include <vector>

#include <QByteArray>
#include <QList>

namespace MWCore {

/// The id (f_fsid) of the file system that the open item @p item is on; 0 if it has none or @p item
/// is not open.
[[nodiscard]] uint64_t fileSystemOf(int item);

/// Allows @p guard to touch the file system that the item of @p record was on, wherever it is
/// mounted. A network or FUSE file system is recognised by the mount table alone.
void allowRecorded(const AliasRecord &record, MountGuard &guard);

/// The mounts of that file system that are visible now, the one that holds the recorded path first;
/// empty if there are none. A local file system is recognised by its id; if that is only a device
/// number, also by its source and place; and if the record has neither birth time nor handle, also
/// by the inode number of its root.
[[nodiscard]] std::vector<const Mount *> mountsOfRecorded(const AliasRecord &record,
                                                          const MountGuard &guard);

/// The names on the path from the recorded mount point to the item. Empty for the mount point
/// itself, and if the path contains "." or "..".
[[nodiscard]] QList<QByteArray> namesBelowMountPoint(const AliasRecord &record);

} // namespace MWCore
