// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "JsonObject.h"
#include "ShownMetadata.h"

#include <MWCore/MXFileSystemObject.h>

namespace MWCore::mwfile {

/// An item and its metadata as JSON members named after the item's operations. @p target is the
/// final target of a link or alias. Times are ISO 8601 in UTC, sizes in bytes.
[[nodiscard]] JsonObject itemJson(const MXFileSystemObject &item, const ItemMetadata &metadata,
                                  const std::optional<std::string> &target);

/// Adds a time (seconds since 1970-01-01 UTC) in ISO 8601. Adds null if there is no time or if the
/// year does not have four digits.
void addTime(JsonObject &json, std::string_view key, std::optional<int64_t> seconds);

/// The kind as a word: "folder".
[[nodiscard]] const char *kindWord(MXItemKind kind);

} // namespace MWCore::mwfile
