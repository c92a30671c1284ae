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
    int64_t changeTime = 0;    ///< of the inode, in nanoseconds since 1970
    OSStatus status = noErr;
};

/// Examines the item itself, not a link's target. A server is not asked again for what it has told
/// already: the kind of an item never changes, and no server tells whether it is immutable.
[[nodiscard]] ItemStatus itemStatus(const QByteArray &path);

} // namespace MWCore
