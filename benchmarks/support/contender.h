// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <chrono>
#include <cstdio>
#include <cstring>
#include <vector>

/// The main function of a contender: times `list(FOLDER)`, which returns the number of entries and
/// keeps what it made, and prints nanoseconds, entries and the bytes of memory that it took.
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

/// A part of the work and what it took.
struct Part {
    const char *what;
    std::chrono::nanoseconds taken;
};

inline Clock::time_point partStart;
inline std::vector<Part> parts;

/// Whatever was done since the last part ended, or since list() began, was @p what.
inline void endPart(const char *what) {
    const Clock::time_point now = Clock::now();
    parts.push_back({what, now - partStart});
    partStart = Clock::now();
}

/// Prints nanoseconds and name of each part, a line each, behind what run() prints.
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

/// Keeps the compiler from leaving out a read whose value nobody needs.
template <typename Value> void use(const Value &value) {
    asm volatile("" : : "r,m"(value) : "memory");
}

} // namespace contender
