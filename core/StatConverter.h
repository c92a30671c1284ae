// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/AccountNames.h"
#include "core/DateTexts.h"
#include "core/record_tree.h"
#include "core/records.h"

#include <sys/stat.h>

namespace MWCore {

/// Where an item is; for a link that leads somewhere, also the path of what it leads to.
struct ItemPlace {
    std::string_view parentPath;
    std::string_view name;
    Text linkTarget; ///< null for a link whose target has no path
};

/// Turns what one stat call told into a record. Keeps what many items share, so one converter
/// serves a whole listing.
class StatConverter {
public:
    /// @p target describes what a link leads to; null for a link that leads nowhere, and without
    /// meaning for anything else. Null, with the cause in `errno`, when memory or descriptors run
    /// out.
    [[nodiscard]] RecordTree convert(const struct stat &item, const struct stat *target,
                                     ItemPlace place);

private:
    [[nodiscard]] bool addTexts(const struct stat &item, RecordDraft &draft);

    AccountNames accounts_;
    DateTexts dates_;
};

/// The record of the item that @p path names, from what the stat calls told (@p target_stat as
/// above). Null with a trace line for a null @p stat; null, with the cause in `errno`, when memory
/// runs out.
[[nodiscard]] RecordTree _stat_to_fso(const struct stat *stat, const struct stat *target_stat,
                                      const char *path, StatConverter &converter);

} // namespace MWCore
