// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "apps/mwfile/SizeText.h"

#include "core/mfs_utility.h"

#include <cstdio>
#include <cstdlib>
#include <new>

namespace MWCore::mwfile {
namespace {

std::string shortSize(int64_t bytes) {
    char *const text = mfs_utility_format_size(bytes);
    if (!text)
        throw std::bad_alloc();
    std::string result = text;
    std::free(text);
    return result;
}

} // namespace

std::string alignedSize(int64_t bytes) {
    const std::string text = shortSize(bytes);
    const std::size_t blank = text.find(' ');
    char aligned[32];
    std::snprintf(aligned, sizeof aligned, "%4s %-2s", text.substr(0, blank).c_str(),
                  text.substr(blank + 1).c_str());
    return aligned;
}

std::string alignedNoSize() {
    return "   -   ";
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
