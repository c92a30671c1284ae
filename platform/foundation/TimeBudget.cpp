// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/foundation/TimeBudget.h"

#include <ctime>

namespace MWCore {

TimeBudget::TimeBudget(Limits limits, Clock clock)
    : limits_(limits), clock_(clock), begin_(clock()) {}

bool TimeBudget::isLeftAt(int64_t now) const {
    constexpr int64_t kWhole = 100; // percent
    const int64_t used = used_ + (usedSince_ == kNotUsed ? 0 : now - usedSince_);
    const int64_t rest = now - begin_ - used;
    return used < limits_.fixed + rest * limits_.share / kWhole;
}

void TimeBudget::end() {
    used_ += clock_() - usedSince_;
    usedSince_ = kNotUsed;
}

int64_t TimeBudget::threadTime() {
    constexpr int64_t kNanoseconds = 1'000'000'000;
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return time.tv_sec * kNanoseconds + time.tv_nsec;
}

} // namespace MWCore
