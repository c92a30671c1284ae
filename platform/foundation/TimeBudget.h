// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>

#include <cstdint>

namespace MWCore {

/// A budget of processor time for optional work: a fixed amount, plus a share of the time that
/// everything else takes from construction on. It counts the processor time of the calling thread,
/// not its waits. Belongs to one thread.
class MWCORE_EXPORT TimeBudget {
public:
    using Clock = int64_t (*)(); ///< nanoseconds of the calling thread

    struct Limits {
        int64_t fixed = 0; ///< nanoseconds
        int64_t share = 0; ///< percent of the time that everything else takes
    };

    explicit TimeBudget(Limits limits, Clock clock = &threadTime);

    /// Whether any time is left. May be called within a Use, to end a long one.
    [[nodiscard]] bool isLeft() const { return isLeftAt(clock_()); }

    /// Charges the time of its own lifetime to the time budget, if any is left at the start. One at
    /// a time.
    class Use {
    public:
        explicit Use(TimeBudget &timeBudget) : timeBudget_(timeBudget) {
            const int64_t now = timeBudget.clock_();
            isGranted_ = timeBudget.isLeftAt(now);
            if (isGranted_)
                timeBudget.usedSince_ = now;
        }
        Use(const Use &) = delete;
        Use &operator=(const Use &) = delete;
        ~Use() {
            if (isGranted_)
                timeBudget_.end();
        }

        [[nodiscard]] bool isGranted() const { return isGranted_; }

    private:
        TimeBudget &timeBudget_;
        bool isGranted_;
    };

    /// The processor time that the calling thread has used, in nanoseconds.
    [[nodiscard]] static int64_t threadTime();

private:
    static constexpr int64_t kNotUsed = -1;

    [[nodiscard]] bool isLeftAt(int64_t now) const;
    void end();

    Limits limits_;
    Clock clock_;
    int64_t begin_;
    int64_t used_ = 0;
    int64_t usedSince_ = kNotUsed;
};

} // namespace MWCore
