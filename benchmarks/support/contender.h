// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <chrono>
#include <cstdio>
#include <cstring>
#include <vector>

/// The main function of a contender: times `list(FOLDER)`, which returns the number of entries and
/// keeps its results, and prints nanoseconds, entries and bytes of memory.
namespace contender {

/// A field of /proc/self/status in kilobytes.
inline long statusKilobytes(const char *field) {
    long value = 0;
    char line[256];
    std::FILE *const status = std::fopen("/proc/self/status", "re");
    while (status && std::fgets(line, sizeof line, status))
        if (std::strncmp(line, field, std::strlen(field)) == 0)
            std::sscanf(line + std::strlen(field), ": %ld", &value);
    if (status)
        std::fclose(status);
    return value;
}

using Clock = std::chrono::steady_clock;

/// A part of the work and its time.
struct Part {
    const char *what;
    std::chrono::nanoseconds taken;
};

inline Clock::time_point partStart;
inline std::vector<Part> parts;

/// Ends the part @p what, which started at the end of the last part or at the start of list().
inline void endPart(const char *what) {
    const Clock::time_point now = Clock::now();
    parts.push_back({what, now - partStart});
    partStart = Clock::now();
}

/// Prints nanoseconds and name of each part, one per line, after the line of run().
inline void printParts() {
    for (const Part &part : parts)
        std::printf("%lld %s\n", static_cast<long long>(part.taken.count()), part.what);
}

template <typename List> int run(int argumentCount, char **arguments, List list) {
    if (argumentCount != 2)
        return 2;
    const long before = statusKilobytes("VmRSS");
    const Clock::time_point start = partStart = Clock::now();
    const long entries = list(arguments[1]);
    const std::chrono::nanoseconds taken = Clock::now() - start;
    const long peak = statusKilobytes("VmHWM");
    std::printf("%lld %ld %ld\n", static_cast<long long>(taken.count()), entries,
                (peak - before) * 1024);
    return entries < 0 ? 1 : 0;
}

/// Keeps the compiler from optimising away a read whose value is not used.
template <typename Value> void use(const Value &value) {
    asm volatile("" : : "r,m"(value) : "memory");
}

} // namespace contender
