// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "apps/mwfile/SizeText.h"

namespace MWCore::mwfile {

SizeText shortSize(int64_t bytes) {
    // The steps of mfs_utility_format_size(), whose number has only 32 bits.
    struct Unit {
        int64_t bytes;
        const char *text;
    };
    static constexpr Unit units[] = {{1'024'000'000, "GB"}, {1'024'000, "MB"}, {1'024, "k"}};
    for (const Unit &unit : units)
        if (bytes >= unit.bytes)
            return {std::to_string(bytes / unit.bytes), unit.text};
    return {std::to_string(bytes), ""};
}

std::string wholeSize(int64_t bytes) {
    std::string text = groupedDigits(bytes) + (bytes == 1 ? " byte" : " bytes");
    const SizeText size = shortSize(bytes);
    return size.unit.empty() ? text : text + " (" + size.number + " " + size.unit + ")";
}

std::string groupedDigits(int64_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t end = digits.size(); end > 3;) {
        end -= 3;
        digits.insert(end, 1, ',');
    }
    return digits;
}

} // namespace MWCore::mwfile
