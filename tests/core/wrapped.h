// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// How many allocations fail once memory has run out.
enum class OutOfMemory { Permanently, Once };

/// Controls the libc functions that the linker wraps in this program. The fields change their
/// behaviour; without an object they behave as usual. Only one may exist at a time.
struct WrappedLibc {
    WrappedLibc();
    WrappedLibc(const WrappedLibc &) = delete;
    WrappedLibc &operator=(const WrappedLibc &) = delete;
    ~WrappedLibc();

    std::optional<int64_t> now; ///< the result of time(), if set
    long allocationsLeft = -1;  ///< until memory runs out; negative: no limit
    OutOfMemory outOfMemory = OutOfMemory::Permanently;
    int entriesLeft = -1; ///< until readdir() fails with EIO; negative: no limit
    std::function<int(std::string)> statError; ///< the `errno` value for a stat of the name, or 0
    std::vector<int> lookupErrors;             ///< results of the first user lookups, in order

    // Numbers of calls so far.
    int stats = 0;
    int userLookups = 0;
    int groupLookups = 0;
};
