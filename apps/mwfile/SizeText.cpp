// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "apps/mwfile/SizeText.h"

#include "core/mfs_utility.h"

#include <cstdlib>
#include <new>

namespace MWCore::mwfile {

std::string shortSize(int64_t bytes) {
    constexpr int64_t kGigabyte = 1'024'000'000;
    if (bytes >= kGigabyte) // where the library's own text narrows the number to 32 bits
        return std::to_string(bytes / kGigabyte) + " GB";
    char *const text = mfs_utility_format_size(bytes);
    if (!text)
        throw std::bad_alloc();
    std::string result = text;
    std::free(text);
    if (result.ends_with(' '))
        result.pop_back();
    return result;
}

std::string wholeSize(int64_t bytes) {
    const std::string count = groupedDigits(bytes) + (bytes == 1 ? " byte" : " bytes");
    constexpr int64_t kFirstWithUnit = 1024;
    return bytes < kFirstWithUnit ? count : count + " (" + shortSize(bytes) + ")";
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
