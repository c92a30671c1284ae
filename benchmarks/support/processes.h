// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <string>
#include <vector>

/// Contenders that are processes of their own.
namespace processes {

/// How a contender tells what it took.
enum class Report {
    OnOutput, ///< it measures itself and prints nanoseconds, entries and bytes (contender.h)
    Whole,    ///< the whole process is measured, less what it takes for an empty folder
};

struct Contender {
    const char *what;
    std::vector<std::string> command; ///< the folder's path is appended
    Report report;
};

/// A part of a run that a contender measured (contender.h).
struct Part {
    std::string what;
    double nanoseconds = 0;
};

struct Run {
    double nanoseconds = 0;
    double bytes = 0;
    std::vector<Part> parts;
};

/// Contenders that are to be run over one folder after the other. Throws std::runtime_error when
/// one cannot be started or fails.
class Comparison {
public:
    explicit Comparison(std::vector<Contender> contenders);

    [[nodiscard]] const std::vector<Contender> &contenders() const { return contenders_; }

    /// The medians over @p folder, which has @p entries, one for each contender.
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
