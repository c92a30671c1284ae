// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <functional>
#include <string>
#include <vector>

/// Contenders that run as separate processes.
namespace processes {

/// Who measures the time and memory of a contender.
enum class MeasuredBy {
    Itself, ///< the contender, which prints nanoseconds, entries and bytes (contender.h)
    Caller, ///< run(), which measures the whole process
};

struct Contender {
    const char *what;
    std::vector<std::string> command; ///< the folder's path is appended
    MeasuredBy measuredBy;
    int highestStatus = 0; ///< accepted exit status: some contenders fail if one item is unreadable
};

/// A part of a run that a contender measured (contender.h).
struct Part {
    std::string what;
    double nanoseconds = 0;
};

struct Run {
    double nanoseconds = 0;
    double processorNanoseconds = 0; ///< user and system time, always of the whole process
    double bytes = 0; ///< if MeasuredBy::Caller: the peak, which is at least that of this process
    long entries = 0; ///< as the contender counts them; 0 if MeasuredBy::Caller
    std::vector<Part> parts = {};
};

/// Runs a contender on @p folder. Throws std::runtime_error if it cannot be started or fails.
[[nodiscard]] Run run(const Contender &contender, const std::string &folder);

/// Runs a command without its output. Throws as run() does.
void runSilently(std::vector<std::string> command);

/// How often the contenders take turns, so that a change in the machine's speed affects them all.
/// Without preparation, an additional first round warms up and is not counted.
struct Rounds {
    int count;
    std::function<void()> prepare = {}; ///< called before each run, not measured
};

/// The medians on @p folder, one for each contender. Throws as run() does.
[[nodiscard]] std::vector<Run> mediansInTurn(const std::vector<Contender> &contenders,
                                             const std::string &folder, const Rounds &rounds);

/// Runs the same contenders on several folders. Throws as run() does.
class Comparison {
public:
    explicit Comparison(std::vector<Contender> contenders);

    [[nodiscard]] const std::vector<Contender> &contenders() const { return contenders_; }

    /// The medians on @p folder, which has @p entries, one for each contender. If
    /// MeasuredBy::Caller, the contender's figures for an empty folder are subtracted.
    [[nodiscard]] std::vector<Run> medians(const std::string &folder, long entries) const;

private:
    std::vector<Contender> contenders_;
    std::vector<Run> emptyRuns_; ///< on an empty folder
};

/// Prints the contenders' figures for @p entries. The column @p ratioHeading has the first one's
/// time divided by the row's.
void printTable(const char *ratioHeading, const std::vector<Contender> &contenders, long entries,
                const std::vector<Run> &runs);

} // namespace processes
