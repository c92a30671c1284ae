// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <chrono>
#include <cstdio>
#include <cstring>

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

template <typename List> int run(int argumentCount, char **arguments, List list) {
    if (argumentCount != 2)
        return 2;
    const long before = statusKilobytes("VmRSS");
    const auto start = std::chrono::steady_clock::now();
    const long entries = list(arguments[1]);
    const std::chrono::nanoseconds taken = std::chrono::steady_clock::now() - start;
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
