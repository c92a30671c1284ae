// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "apps/mwfile/JsonObject.h"
#include "core/mfs_fso.h"

namespace MWCore::mwfile {

/// What a record tells, as JSON members named after the operations of the file item model. Times
/// are ISO 8601 in UTC, sizes in bytes.
[[nodiscard]] JsonObject itemJson(const mfs_fso &item);

/// Adds a time, given in seconds since 1970-01-01 UTC, in ISO 8601; null for a year that four
/// digits cannot write.
void addTime(JsonObject &json, std::string_view key, int64_t seconds);

/// The kind of an item in a word.
[[nodiscard]] const char *kindWord(int32_t type);

} // namespace MWCore::mwfile
