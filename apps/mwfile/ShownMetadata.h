// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/Aliases.h>
#include <MWCore/ListedMetadata.h>

#include <optional>
#include <string>

namespace MWCore::mwfile {

/// The metadata that commands show.
inline constexpr ItemMetadata::Parts kShownMetadata{
    ItemMetadata::Part::Inode, ItemMetadata::Part::DateCreated, ItemMetadata::Part::FinderInfo};

/// Reads metadata and targets for the rows of a listing. Together the rows take a limited time for
/// untrusted contents.
class RowInspection {
public:
    explicit RowInspection(const MXFileSystemObject &folder)
        : timeBudget_(ListedMetadata::kUsualLimits), metadata_(folder, timeBudget_),
          aliases_(timeBudget_) {}

    [[nodiscard]] ItemMetadata metadataOf(const MXFileSystemObject &item) {
        return metadata_.read(item, kShownMetadata);
    }

    /// The final target of a link or alias. nullopt if the item is neither, if the target does not
    /// exist or has no path, or if it is not found in time.
    [[nodiscard]] std::optional<std::string> targetOf(const MXFileSystemObject &item);

private:
    TimeBudget timeBudget_;
    ListedMetadata metadata_;
    ListedAliases aliases_;
};

/// Whether there was no time to read label, type, creator and invisibility.
[[nodiscard]] bool isIncomplete(const ItemMetadata &metadata);

/// As MXFileSystemObject::isLocked(), but from @p metadata.
[[nodiscard]] bool isLocked(const MXFileSystemObject &item, const ItemMetadata &metadata);

/// The creation date in seconds since 1970-01-01 UTC; nullopt if not known.
[[nodiscard]] std::optional<int64_t> secondsCreated(const ItemMetadata &metadata);

/// A reference to the item at @p path. Throws Failure if there is no such item.
[[nodiscard]] FSRef referenceTo(const std::string &path);

/// The four characters of a type or creator; nullopt for a code that means none.
[[nodiscard]] std::optional<std::string> codeText(uint32_t code);

/// The label with the number, 0 to 7.
[[nodiscard]] MXLabel::Ptr labelWithNumber(int number);

/// A label's name; "None" for number 0.
[[nodiscard]] std::string labelText(const MXLabel &label);

} // namespace MWCore::mwfile
