// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <string>

namespace MWCore::mwfile {

/// A short size: a number and the unit that it counts, "4" and "MB". Bytes have no unit.
struct SizeText {
    std::string number;
    std::string unit;
};
[[nodiscard]] SizeText shortSize(int64_t bytes);

/// The whole count with the short text behind it: "281,624 bytes (275 k)".
[[nodiscard]] std::string wholeSize(int64_t bytes);

/// All digits in groups of three, as "281,624".
[[nodiscard]] std::string groupedDigits(int64_t number);

} // namespace MWCore::mwfile
