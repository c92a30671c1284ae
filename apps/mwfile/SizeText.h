// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <string>

namespace MWCore::mwfile {

/// The short size text of @p bytes, without a blank at its end: "512", "4 MB".
[[nodiscard]] std::string shortSize(int64_t bytes);

/// The whole count with the short text behind it: "281,624 bytes (275 k)".
[[nodiscard]] std::string wholeSize(int64_t bytes);

/// All digits in groups of three, as "281,624".
[[nodiscard]] std::string groupedDigits(int64_t number);

} // namespace MWCore::mwfile
