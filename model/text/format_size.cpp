// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/text/format_size.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace MWCore {
namespace {

struct Unit {
    uint64_t largest; ///< size that is given in this unit
    int shift;
    uint64_t divisor; ///< of the remainder
    const char *text;
};
constexpr Unit kUnits[] = {
    {0x3FF, 0, 1, ""},
    {0xFFFFF, 10, 100, "KB"},
    {0x3FFFFFFF, 20, 1'000, "MB"},
    {0xFFFFFFFFFF, 30, 10'000'000, "GB"},
    {UINT64_MAX, 40, 1'000'000'000, "TB"},
};
constexpr int kLargestDropped = 4;

} // namespace

char *format_size(uint64_t size) {
    const Unit &unit = *std::ranges::lower_bound(kUnits, size, {}, &Unit::largest);
    const int whole = static_cast<int>(size >> unit.shift); // at most 24 bits
    const uint64_t remainder = size - (uint64_t(whole) << unit.shift);
    const int fraction = static_cast<int>(remainder / unit.divisor);
    const bool isPrinted = fraction > kLargestDropped;
    const std::size_t length = std::strlen(unit.text) + (isPrinted ? 16 : 8);
    auto *const text = static_cast<char *>(std::malloc(length + 1));
    if (!text)
        return nullptr;
    if (isPrinted)
        std::snprintf(text, length + 1, "%d.%d%s", whole, fraction, unit.text);
    else
        std::snprintf(text, length + 1, "%d%s", whole, unit.text);
    return text;
}

} // namespace MWCore
