// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "SizeText.h"

#include <MWCore/mfs_utility.h>

#include <cstdlib>
#include <memory>
#include <new>

namespace MWCore::mwfile {

SizeText shortSize(int64_t bytes) {
    constexpr int64_t kGigabyte = 1'024'000'000;
    if (bytes / kGigabyte > INT32_MAX) // too large for the 32-bit number in the library's text
        return {std::to_string(bytes / kGigabyte), "GB"};
    const std::unique_ptr<char, decltype(&std::free)> text(mfs_utility_format_size(bytes),
                                                           &std::free);
    if (!text)
        throw std::bad_alloc();
    const std::string whole = text.get();
    const std::size_t blank = whole.find(' ');
    return {whole.substr(0, blank), whole.substr(blank + 1)};
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
