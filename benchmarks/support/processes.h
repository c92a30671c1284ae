// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <functional>
#include <string>
#include <vector>

/// Contenders that are processes of their own.
namespace processes {

/// How a contender tells what it took.
enum class Report {
    OnOutput, ///< it measures itself and prints nanoseconds, entries and bytes (contender.h)
    Whole,    ///< the whole process is measured
};

struct Contender {
    const char *what;
    std::vector<std::string> command; ///< the folder's path is appended
    Report report;
    int worstStatus = 0; ///< that it may exit with: some fail when a single item is unreadable
};

/// A part of a run that a contender measured (contender.h).
struct Part {
    std::string what;
    double nanoseconds = 0;
};

struct Run {
    double nanoseconds = 0;
    double processorNanoseconds = 0; ///< of the user and the system; always of the whole process
    double bytes = 0;                ///< of a whole process its peak, and never less than our own
    long entries = 0;                ///< as the contender counts them; 0 of a whole process
    std::vector<Part> parts;
};

/// Runs a contender over @p folder. Throws std::runtime_error when it cannot be started or fails.
[[nodiscard]] Run run(const Contender &contender, const std::string &folder);

/// How often contenders take turns, one after the other, so that a change of the machine's speed
/// meets them all. Without preparation one more round, which is not counted, warms up.
struct Rounds {
    int count;
    std::function<void()> prepare = {}; ///< done before each run, not measured
};

/// The medians over @p folder, one for each contender. Throws as run() does.
[[nodiscard]] std::vector<Run> mediansInTurn(const std::vector<Contender> &contenders,
                                             const std::string &folder, const Rounds &rounds);

/// Contenders that are to be run over one folder after the other. Throws as run() does.
class Comparison {
public:
    explicit Comparison(std::vector<Contender> contenders);

    [[nodiscard]] const std::vector<Contender> &contenders() const { return contenders_; }

    /// The medians over @p folder, which has @p entries, one for each contender; of a whole process
    /// less what it takes for an empty folder.
    [[nodiscard]] std::vector<Run> medians(const std::string &folder, long entries) const;

private:
    std::vector<Contender> contenders_;
    std::vector<Run> starts_; ///< over an empty folder
};

/// Prints what the contenders took for @p entries, the time of the first, which is called
/// @p firstTakes, as a ratio of each one's.
void printTable(const char *firstTakes, const std::vector<Contender> &contenders, long entries,
                const std::vector<Run> &runs);

} // namespace processes
