// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "benchmarks/support/processes.h"

#include "benchmarks/support/check.h"
#include "benchmarks/support/counts.h"
#include "benchmarks/support/median.h"
#include "benchmarks/support/TemporaryFolder.h"

#include <chrono>
#include <cstdio>
#include <optional>
#include <sstream>
#include <utility>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace processes {
namespace {

std::string readAll(int descriptor) {
    std::string text;
    char buffer[4096];
    for (ssize_t length = 0; (length = read(descriptor, buffer, sizeof buffer)) > 0;)
        text.append(buffer, static_cast<std::size_t>(length));
    return text;
}

constexpr int kNowhere = -1;

/// Starts a command whose standard output goes to the descriptor @p output or to kNowhere.
pid_t spawn(std::vector<std::string> &command, int output) {
    std::vector<char *> arguments;
    for (std::string &argument : command)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (output == kNowhere)
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    else
        posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    pid_t process = 0;
    const int error =
        posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    require(error == 0, "cannot start " + command[0]);
    return process;
}

bool hasSucceeded(int status, int highestStatus) {
    return WIFEXITED(status) && WEXITSTATUS(status) <= highestStatus;
}

/// Parses what a contender printed: one line of figures, then one line per part.
std::optional<Run> runFrom(const std::string &printed) {
    std::istringstream lines(printed);
    Run result;
    if (!(lines >> result.nanoseconds >> result.entries >> result.bytes))
        return std::nullopt;
    for (Part part; lines >> part.nanoseconds >> std::ws && std::getline(lines, part.what);)
        result.parts.push_back(part);
    return result;
}

double nanosecondsOf(const timeval &time) {
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_usec) * 1e3;
}

double medianOf(const std::vector<Run> &runs, const std::function<double(const Run &)> &value) {
    std::vector<double> values;
    for (const Run &run : runs)
        values.push_back(value(run));
    return median(values);
}

Run medianOf(const std::vector<Run> &runs) {
    Run result = runs.front();
    for (double Run::*const value : {&Run::nanoseconds, &Run::processorNanoseconds, &Run::bytes})
        result.*value = medianOf(runs, std::mem_fn(value));
    for (std::size_t part = 0; part < result.parts.size(); ++part)
        result.parts[part].nanoseconds =
            medianOf(runs, [part](const Run &run) { return run.parts.at(part).nanoseconds; });
    return result;
}

} // namespace

Run run(const Contender &contender, const std::string &folder) {
    std::vector<std::string> command = contender.command;
    command.push_back(folder);
    int output[2];
    check(pipe2(output, O_CLOEXEC) == 0, "pipe2");
    const auto start = std::chrono::steady_clock::now();
    const pid_t process =
        spawn(command, contender.measuredBy == MeasuredBy::Itself ? output[1] : kNowhere);
    close(output[1]);
    const std::string printed = readAll(output[0]);
    close(output[0]);
    int status = 0;
    rusage usage{};
    wait4(process, &status, 0, &usage);
    const std::chrono::nanoseconds taken = std::chrono::steady_clock::now() - start;
    require(hasSucceeded(status, contender.highestStatus), command[0] + " failed");

    std::optional<Run> result = contender.measuredBy == MeasuredBy::Itself
                                    ? runFrom(printed)
                                    : Run{.nanoseconds = static_cast<double>(taken.count()),
                                          .bytes = static_cast<double>(usage.ru_maxrss) * 1024};
    require(result.has_value(), command[0] + " printed no figures");
    result->processorNanoseconds = nanosecondsOf(usage.ru_utime) + nanosecondsOf(usage.ru_stime);
    return *std::move(result);
}

void runSilently(std::vector<std::string> command) {
    int status = 0;
    waitpid(spawn(command, kNowhere), &status, 0);
    require(hasSucceeded(status, 0), command[0] + " failed");
}

std::vector<Run> mediansInTurn(const std::vector<Contender> &contenders, const std::string &folder,
                               const Rounds &rounds) {
    std::vector<std::vector<Run>> runs(contenders.size());
    for (int round = rounds.prepare ? 0 : -1; round < rounds.count; ++round)
        for (std::size_t index = 0; index < contenders.size(); ++index) {
            if (rounds.prepare)
                rounds.prepare();
            Run one = run(contenders[index], folder);
            if (round >= 0)
                runs[index].push_back(std::move(one));
        }
    std::vector<Run> result;
    for (const std::vector<Run> &contenderRuns : runs)
        result.push_back(medianOf(contenderRuns));
    return result;
}

Comparison::Comparison(std::vector<Contender> contenders) : contenders_(std::move(contenders)) {
    const TemporaryFolder empty;
    emptyRuns_ = mediansInTurn(contenders_, empty.path(), {counts::roundsFor(0)});
}

std::vector<Run> Comparison::medians(const std::string &folder, long entries) const {
    std::vector<Run> runs = mediansInTurn(contenders_, folder, {counts::roundsFor(entries)});
    for (std::size_t index = 0; index < contenders_.size(); ++index)
        if (contenders_[index].measuredBy == MeasuredBy::Caller) {
            runs[index].nanoseconds -= emptyRuns_[index].nanoseconds;
            runs[index].bytes -= emptyRuns_[index].bytes;
        }
    return runs;
}

void printTable(const char *ratioHeading, const std::vector<Contender> &contenders, long entries,
                const std::vector<Run> &runs) {
    std::printf("\n| %s entries | ms | ns per entry | %s | bytes per entry |\n"
                "|---|---:|---:|---:|---:|\n",
                counts::withThousands(entries).c_str(), ratioHeading);
    for (std::size_t index = 0; index < contenders.size(); ++index)
        std::printf("| %s | %.2f | %.0f | %.2f x | %.0f |\n", contenders[index].what,
                    runs[index].nanoseconds / 1e6,
                    runs[index].nanoseconds / static_cast<double>(entries),
                    runs[0].nanoseconds / runs[index].nanoseconds,
                    runs[index].bytes / static_cast<double>(entries));
    std::fflush(stdout);
}

} // namespace processes
