// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/foundation/OSStatus.h"
#include "platform/foundation/TimeBudget.h"
#include "platform/references/FSRef.h"

#include <atomic>
#include <cstdint>

namespace MWCore {

/// How far the search for an item may go.
struct SearchLimits {
    int64_t entries = kMostSearchedNames;         ///< names read before it gives up
    const std::atomic<bool> *cancelled = nullptr; ///< read after every block of names; may be null
    const TimeBudget *timeBudget = nullptr;       ///< checked at the same times; null: no limit
};

/// What is left of the limits of one search, and why the search ended early. All steps of the
/// search share it: once it has stopped, no later step may return an item.
class SearchBudget {
public:
    explicit SearchBudget(SearchLimits limits) : limits_(limits) {}

    /// Whether another step may be taken; if not, the budget has stopped.
    [[nodiscard]] bool mayStep() {
        if (limits_.cancelled && limits_.cancelled->load(std::memory_order_relaxed))
            stop(userCanceledErr);
        else if (limits_.timeBudget && !limits_.timeBudget->isLeft())
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

    /// Stops the search. The first reason given counts.
    void stop(OSStatus status) { stopped_ = stopped_ == noErr ? status : stopped_; }
    [[nodiscard]] bool hasStopped() const { return stopped_ != noErr; }

    /// Records that something could not be searched, so that an item that is not found may still
    /// exist.
    void markIncomplete(OSStatus status) {
        incomplete_ = incomplete_ == noErr ? status : incomplete_;
    }

    /// noErr, or why an item that was not found may still exist.
    [[nodiscard]] OSStatus status() const { return hasStopped() ? stopped_ : incomplete_; }

private:
    SearchLimits limits_;
    OSStatus stopped_ = noErr;
    OSStatus incomplete_ = noErr;
};

} // namespace MWCore
