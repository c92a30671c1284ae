// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <ctime>

namespace MWCore {

/// The time of @p clock (CLOCK_MONOTONIC_COARSE, ...) in nanoseconds. Coarse clocks are some
/// milliseconds old, and need no system call. Any thread.
[[nodiscard]] inline int64_t coarseTime(clockid_t clock) {
    constexpr int64_t kSecond = 1'000'000'000;
    timespec now = {};
    clock_gettime(clock, &now);
    return now.tv_sec * kSecond + now.tv_nsec;
}

} // namespace MWCore
