// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/AccountNames.h"
#include "core/DateTexts.h"
#include "core/record_tree.h"
#include "core/records.h"

#include <sys/stat.h>

namespace MWCore {

/// The paths that a record is made with.
struct ItemPaths {
    std::string_view parentPath;
    std::string_view name;
    Text linkTarget; ///< the target of a link; null if it has no path, and for other items
};

/// Converts `stat` results into records. Caches names and dates, so use one for a whole listing.
class StatConverter {
public:
    /// @p target describes the target of a link and is null for a broken link; it is ignored for
    /// other items. Returns null and sets `errno` if memory or descriptors run out.
    [[nodiscard]] RecordTree convert(const struct stat &item, const struct stat *target,
                                     ItemPaths paths);

private:
    [[nodiscard]] bool addTexts(const struct stat &item, RecordDraft &draft);

    AccountNames accounts_;
    DateTexts dates_;
};

/// The record of the item at @p path, from its `stat` result and, for a link, that of its target
/// (@p target_stat, as above). Returns null with a trace line if @p stat is null; returns null and
/// sets `errno` if memory or descriptors run out.
[[nodiscard]] RecordTree _stat_to_fso(const struct stat *stat, const struct stat *target_stat,
                                      const char *path, StatConverter &converter);

} // namespace MWCore
