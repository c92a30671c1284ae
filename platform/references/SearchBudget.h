// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/foundation/OSStatus.h"
#include "platform/foundation/TimeAllowance.h"

#include <atomic>
#include <cstdint>

namespace MWCore {

/// How far the search for an item may go.
struct SearchLimits {
    int64_t entries = 4'000'000;                  ///< names looked at before it gives up
    const std::atomic<bool> *cancelled = nullptr; ///< read after every block of names; may be null
    const TimeAllowance *allowance = nullptr;     ///< the same; null: any time
};

/// What is left of the limits, over all steps that lead to one item, and why they ended early. It
/// is handed from step to step: once it has stopped, no later step may answer.
class SearchBudget {
public:
    explicit SearchBudget(SearchLimits limits) : limits_(limits) {}

    /// Whether another step may be taken; if not, the budget has stopped.
    [[nodiscard]] bool mayStep() {
        if (limits_.cancelled && limits_.cancelled->load(std::memory_order_relaxed))
            stop(userCanceledErr);
        else if (limits_.allowance && !limits_.allowance->isLeft())
            stop(fileBoundsErr);
        return !hasStopped();
    }

    /// The same for reading names.
    [[nodiscard]] bool mayReadNames() {
        if (mayStep() && limits_.entries <= 0)
            stop(fileBoundsErr);
        return !hasStopped();
    }

    void countName() { --limits_.entries; }

    /// Nothing is looked at any more, for the first reason given.
    void stop(OSStatus status) { stopped_ = stopped_ == noErr ? status : stopped_; }
    [[nodiscard]] bool hasStopped() const { return stopped_ != noErr; }

    /// Something could not be looked at, so that an item that is not found may be there all the
    /// same.
    void leaveOut(OSStatus status) { leftOut_ = leftOut_ == noErr ? status : leftOut_; }

    /// noErr, or why an item that was not found may be there all the same.
    [[nodiscard]] OSStatus status() const { return hasStopped() ? stopped_ : leftOut_; }

private:
    SearchLimits limits_;
    OSStatus stopped_ = noErr;
    OSStatus leftOut_ = noErr;
};

} // namespace MWCore
