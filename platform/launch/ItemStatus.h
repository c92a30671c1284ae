// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/foundation/OSStatus.h"

#include <cstdint>

#include <QByteArray>

#include <sys/stat.h>

namespace MWCore {

/// What one statx(2) finds out about an item.
struct ItemStatus {
    mode_t mode = 0;
    bool isMountPoint = false; ///< a folder where a file system is mounted
    bool isLocked = false;     ///< immutable (chattr(1))
    uint64_t inodeState = 0;   ///< inodeState()
    OSStatus status = noErr;
};

/// A number for the inode of an item and the time of its last change: another one once the item has
/// changed, or once another one is at its path. Never 0.
[[nodiscard]] uint64_t inodeState(const struct stat &item);

/// Examines the item itself, not a link's target. A server is not asked again for what it has told
/// already: the kind of an item never changes, and no server tells whether it is immutable.
[[nodiscard]] ItemStatus itemStatus(const QByteArray &path);

} // namespace MWCore
