// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "Catalogue.h"
#include "JsonObject.h"

#include <MWCore/MXFileSystemObject.h>

namespace MWCore::mwfile {

/// What an item and its metadata tell, as JSON members named after its operations; a link or alias
/// leads to @p target in the end. Times are ISO 8601 in UTC, sizes in bytes.
[[nodiscard]] JsonObject itemJson(const MXFileSystemObject &item, const ItemMetadata &metadata,
                                  const std::optional<std::string> &target);

/// Adds a time, given in seconds since 1970-01-01 UTC, in ISO 8601; null for none, and for a year
/// that four digits cannot write.
void addTime(JsonObject &json, std::string_view key, std::optional<int64_t> seconds);

/// The kind of an item in a word.
[[nodiscard]] const char *kindWord(MXItemKind kind);

} // namespace MWCore::mwfile
