// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <sys/stat.h>

#include <QByteArray>

namespace MWCore {

/// What one look at an item tells.
struct ItemStatus {
    mode_t mode = 0;
    bool isMountPoint = false; ///< for a folder: a file system begins here
    int error = 0;             ///< errno value of a failure
};

/// Looks at the item itself, not at what it links to.
[[nodiscard]] ItemStatus itemStatus(const QByteArray &path);

} // namespace MWCore
