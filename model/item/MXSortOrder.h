// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mfs_fso.h>

#include <cstdint>

namespace MWCore {

/// What the children of a folder are sorted by. The values are keys of the record.
enum MXSortAttribute : int32_t {
    MXSortAttributeNone = -1, ///< never sorted
    MXSortAttributeAccess = MFS_KEY_ACCESS_PERMS,
    MXSortAttributeDate = MFS_KEY_DATE_MODIFIED,
    MXSortAttributeName = MFS_KEY_NAME,
    MXSortAttributeSize = MFS_KEY_SIZE,
};

enum MXSortOrder : int64_t {
    MXSortOrderNone = -1, ///< never sorted
    MXSortOrderNatural = 0,
    MXSortOrderReversed = 1,
};

} // namespace MWCore
