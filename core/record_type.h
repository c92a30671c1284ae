// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/mfs_fso.h"

#include <sys/stat.h>

namespace MWCore {

/// The MFS_TYPE_... of an item with the file type bits of @p mode.
[[nodiscard]] constexpr int32_t recordTypeOf(mode_t mode) {
    switch (mode & S_IFMT) {
    case S_IFDIR:
        return MFS_TYPE_DIRECTORY;
    case S_IFLNK:
        return MFS_TYPE_LINK;
    case S_IFREG:
        return MFS_TYPE_FILE;
    default:
        return MFS_TYPE_OTHER;
    }
}

} // namespace MWCore
