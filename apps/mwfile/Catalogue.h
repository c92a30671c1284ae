// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "model/item/MXFileSystemObject.h"
#include "platform/aliases/Aliases.h"
#include "platform/foundation/TimeAllowance.h"

#include <optional>
#include <string>
#include <unordered_set>

namespace MWCore::mwfile {

/// What a desktop keeps of an item beside its contents; nothing of what cannot be told.
struct Marks {
    MXLabel::Ptr label; ///< never null
    uint32_t type = 0;
    uint32_t creator = 0;
    bool isInvisible = false;
    bool isLocked = false;
    std::optional<int64_t> created; ///< seconds since 1970-01-01 UTC
    bool isWhole = true; ///< false where label, type, creator and invisibility are not known
};

/// The item's marks as they are now: what its operations of these names answer, but read at once.
[[nodiscard]] Marks marksOf(const MXFileSystemObject &item);

/// What the rows of a listing share: together they take a bounded time to look into what others
/// wrote in items and beside them.
class RowLooks {
public:
    explicit RowLooks(const MXFileSystemObject &folder);

    [[nodiscard]] Marks marksOf(const MXFileSystemObject &item);

    /// Where a link or alias leads in the end; nothing for anything else, and where it leads
    /// nowhere or cannot be told in time.
    [[nodiscard]] std::optional<std::string> targetOf(const MXFileSystemObject &item);

private:
    TimeAllowance allowance_;
    ListedAliases aliases_;
    std::unordered_set<std::string> described_; ///< names of items beside which a sidecar stands
};

/// The reference to the item at @p path. Throws Failure when there is none.
[[nodiscard]] FSRef referenceTo(const std::string &path);

/// The four characters of a type or creator; nothing for a code that means none.
[[nodiscard]] std::optional<std::string> codeText(uint32_t code);

/// The label of number 0 to 7.
[[nodiscard]] MXLabel::Ptr labelNumbered(int number);

/// A label's name; "None" for number 0.
[[nodiscard]] std::string labelText(const MXLabel &label);

} // namespace MWCore::mwfile
