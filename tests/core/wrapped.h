// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// Whether memory that has run out is there again for the next allocation.
enum class MemoryReturns { Never, AtOnce };

/// What stands between the core and libc in this program. Everything is as libc does it until a
/// test says otherwise, and again once its Wrapped goes.
struct Wrapped {
    Wrapped();
    Wrapped(const Wrapped &) = delete;
    Wrapped &operator=(const Wrapped &) = delete;
    ~Wrapped();

    std::optional<int64_t> now; ///< what time() answers
    long allocationsLeft = -1;  ///< then memory has run out; negative for never
    MemoryReturns memoryReturns = MemoryReturns::Never;
    int entriesLeft = -1; ///< from then on readdir() fails with EIO; negative for never
    std::function<int(std::string)> statError; ///< errno for a stat of that name, or 0
    std::vector<int> lookupErrors;             ///< of the first look-ups of users, in order

    int stats = 0; ///< calls so far
    int userLookups = 0;
    int groupLookups = 0;
};
