// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/Aliases.h>
#include <MWCore/ListedMetadata.h>

#include <optional>
#include <string>

namespace MWCore::mwfile {

/// The metadata that is shown of an item.
inline constexpr ItemMetadata::Parts kShownMetadata{
    ItemMetadata::Part::Inode, ItemMetadata::Part::DateCreated, ItemMetadata::Part::FinderInfo};

/// What the rows of a listing share: together they take a bounded time to look into what others
/// wrote in items and beside them.
class RowLooks {
public:
    explicit RowLooks(const MXFileSystemObject &folder)
        : timeBudget_(ListedMetadata::kUsualLimits), metadata_(folder, timeBudget_),
          aliases_(timeBudget_) {}

    [[nodiscard]] ItemMetadata metadataOf(const MXFileSystemObject &item) {
        return metadata_.read(item, kShownMetadata);
    }

    /// Where a link or alias leads in the end; nothing for anything else, and where it leads
    /// nowhere or cannot be told in time.
    [[nodiscard]] std::optional<std::string> targetOf(const MXFileSystemObject &item);

private:
    TimeBudget timeBudget_;
    ListedMetadata metadata_;
    ListedAliases aliases_;
};

/// Whether there was no time to find out label, type, creator and invisibility.
[[nodiscard]] bool isCutShort(const ItemMetadata &metadata);

/// Whether the item is shown as locked: as its operation of this name says.
[[nodiscard]] bool isLocked(const MXFileSystemObject &item, const ItemMetadata &metadata);

/// When the item was made, in seconds since 1970-01-01 UTC.
[[nodiscard]] std::optional<int64_t> secondsCreated(const ItemMetadata &metadata);

/// The reference to the item at @p path. Throws Failure when there is none.
[[nodiscard]] FSRef referenceTo(const std::string &path);

/// The four characters of a type or creator; nothing for a code that means none.
[[nodiscard]] std::optional<std::string> codeText(uint32_t code);

/// The label of number 0 to 7.
[[nodiscard]] MXLabel::Ptr labelNumbered(int number);

/// A label's name; "None" for number 0.
[[nodiscard]] std::string labelText(const MXLabel &label);

} // namespace MWCore::mwfile
