// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "benchmarks/support/median.h"

#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

/// Contenders in one process that take turns, so that a change in the machine's speed affects them
/// all.
namespace turns {

struct Contender {
    const char *what;
    std::function<void()> work;
    std::function<void()> prepare = {}; ///< called before each round, not measured
};

inline double milliseconds(const std::function<void()> &work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

/// The medians of @p rounds in milliseconds, one for each contender.
inline std::vector<double> medians(const std::vector<Contender> &contenders, int rounds) {
    std::vector<std::vector<double>> times(contenders.size());
    for (int round = -1; round < rounds; ++round) // the first warms up
        for (std::size_t index = 0; index < contenders.size(); ++index) {
            if (contenders[index].prepare)
                contenders[index].prepare();
            const double time = milliseconds(contenders[index].work);
            if (round >= 0)
                times[index].push_back(time);
        }
    std::vector<double> result;
    for (const std::vector<double> &contenderTimes : times)
        result.push_back(median(contenderTimes));
    return result;
}

/// Prints the medians of @p rounds, and the first contender's time divided by each one's.
inline void printTable(const char *title, const std::vector<Contender> &contenders, int rounds) {
    const std::vector<double> times = medians(contenders, rounds);
    std::printf("\n| %s | ms | first / this row |\n|---|---:|---:|\n", title);
    for (std::size_t index = 0; index < contenders.size(); ++index)
        std::printf("| %s | %.2f | %.2f x |\n", contenders[index].what, times[index],
                    times[0] / times[index]);
    std::fflush(stdout);
}

} // namespace turns
