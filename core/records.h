// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/mfs_fso.h"
#include "core/posix/allocation.h"

#include <optional>

namespace MWCore {

/// The contents of a new record. makeRecord() moves the owned texts into the record.
struct RecordDraft {
    int32_t type = MFS_TYPE_OTHER;
    int32_t location = MFS_LOCATION_LOCAL;
    int32_t targetType = 0;
    int32_t permissions = 0;
    uint16_t mode = 0; ///< without the file type bits
    int32_t links = 0;
    int64_t size = 0;
    int64_t modificationTime = 0;
    std::string_view nameOrPath;
    std::optional<std::string_view> parentPath;
    Text dateModified;
    Text owner;
    Text group;
    Text aliasLocation;
};

/// Makes a record by the rules of mfs_fso_new(). Returns null and leaves @p draft unchanged if
/// memory runs out.
[[nodiscard]] mfs_fso *makeRecord(RecordDraft &draft);

} // namespace MWCore
