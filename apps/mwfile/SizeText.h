// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <string>

namespace MWCore::mwfile {

/// A short size: a number and its unit, "4" and "MB". The unit of bytes is empty.
struct SizeText {
    std::string number;
    std::string unit;
};
[[nodiscard]] SizeText shortSize(int64_t bytes);

/// The exact size and then the short one: "281,624 bytes (275 k)".
[[nodiscard]] std::string wholeSize(int64_t bytes);

/// The digits in groups of three: "281,624".
[[nodiscard]] std::string groupedDigits(int64_t number);

} // namespace MWCore::mwfile
