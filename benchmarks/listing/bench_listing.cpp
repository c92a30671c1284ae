// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Runs the contenders in turn over folders of growing size and prints one table.
// usage: bench_listing [ENTRIES...]
#include "benchmarks/listing/SampleFolder.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

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

struct Run {
    double nanoseconds = 0;
    double bytes = 0;
};

std::string readAll(int descriptor) {
    std::string text;
    char buffer[4096];
    for (ssize_t length = 0; (length = read(descriptor, buffer, sizeof buffer)) > 0;)
        text.append(buffer, static_cast<std::size_t>(length));
    return text;
}

Run run(const Contender &contender, const std::string &folder) {
    std::vector<std::string> command = contender.command;
    command.push_back(folder);
    std::vector<char *> arguments;
    for (std::string &argument : command)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);

    int output[2];
    if (pipe2(output, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (contender.report == Report::OnOutput)
        posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
    else
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);

    pid_t process = 0;
    const auto start = std::chrono::steady_clock::now();
    if (posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ) != 0)
        throw std::runtime_error("cannot start " + command[0]);
    posix_spawn_file_actions_destroy(&actions);
    close(output[1]);
    const std::string printed = readAll(output[0]);
    close(output[0]);
    int status = 0;
    rusage usage{};
    wait4(process, &status, 0, &usage);
    const std::chrono::nanoseconds taken = std::chrono::steady_clock::now() - start;
    if (status != 0)
        throw std::runtime_error(command[0] + " failed");

    if (contender.report == Report::Whole)
        return {static_cast<double>(taken.count()), static_cast<double>(usage.ru_maxrss) * 1024};
    Run result;
    if (std::sscanf(printed.c_str(), "%lf %*d %lf", &result.nanoseconds, &result.bytes) != 2)
        throw std::runtime_error(command[0] + " printed no figures");
    return result;
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// The medians of runs of all contenders in turn, one after the other, so that a change of the
/// machine's speed meets them all.
std::vector<Run> medians(const std::vector<Contender> &contenders, const std::string &folder,
                         int rounds) {
    std::vector<std::vector<double>> times(contenders.size());
    std::vector<std::vector<double>> sizes(contenders.size());
    for (int round = -1; round < rounds; ++round) // the first warms up
        for (std::size_t index = 0; index < contenders.size(); ++index) {
            const Run one = run(contenders[index], folder);
            if (round < 0)
                continue;
            times[index].push_back(one.nanoseconds);
            sizes[index].push_back(one.bytes);
        }
    std::vector<Run> result;
    for (std::size_t index = 0; index < contenders.size(); ++index)
        result.push_back({median(times[index]), median(sizes[index])});
    return result;
}

std::string withThousands(long number) {
    std::string text;
    const std::string digits = std::to_string(number);
    for (std::size_t index = 0; index < digits.size(); ++index) {
        if (index > 0 && (digits.size() - index) % 3 == 0)
            text += ',';
        text += digits[index];
    }
    return text;
}

void printTable(const std::vector<Contender> &contenders, long entries,
                const std::vector<Run> &runs) {
    std::printf("\n| %s entries | ms | ns an entry | mfs takes | bytes an entry |\n"
                "|---|---:|---:|---:|---:|\n",
                withThousands(entries).c_str());
    for (std::size_t index = 0; index < contenders.size(); ++index)
        std::printf("| %s | %.2f | %.0f | %.2f x | %.0f |\n", contenders[index].what,
                    runs[index].nanoseconds / 1e6,
                    runs[index].nanoseconds / static_cast<double>(entries),
                    runs[0].nanoseconds / runs[index].nanoseconds,
                    runs[index].bytes / static_cast<double>(entries));
    std::fflush(stdout);
}

int roundsFor(long entries) {
    return entries <= 10'000 ? 31 : entries <= 100'000 ? 15 : 5;
}

void compare(const std::vector<Contender> &contenders, const std::vector<long> &sizes) {
    const SampleFolder empty(0);
    const std::vector<Run> starts = medians(contenders, empty.path(), roundsFor(0));
    for (const long entries : sizes) {
        const SampleFolder folder(entries);
        std::vector<Run> runs = medians(contenders, folder.path(), roundsFor(entries));
        for (std::size_t index = 0; index < contenders.size(); ++index)
            if (contenders[index].report == Report::Whole) {
                runs[index].nanoseconds -= starts[index].nanoseconds;
                runs[index].bytes -= starts[index].bytes;
            }
        printTable(contenders, entries, runs);
    }
}

} // namespace

int main(int argumentCount, char **arguments) try {
    const std::filesystem::path here = std::filesystem::path(arguments[0]).parent_path();
    const std::vector<Contender> contenders = {
        {"mfs, all fields and texts", {here / "list_mfs"}, Report::OnOutput},
        {"mfs, and all released again", {here / "list_mfs_released"}, Report::OnOutput},
        {"getdents + fstatat, nothing kept", {here / "list_bare"}, Report::OnOutput},
        {"ls -lU", {"ls", "-lU"}, Report::Whole},
        {"GIO enumerator, nothing kept", {here / "list_gio"}, Report::OnOutput},
        {"QDir::entryInfoList", {here / "list_qt"}, Report::OnOutput},
    };
    std::vector<long> sizes;
    for (int index = 1; index < argumentCount; ++index) {
        char *end = nullptr;
        sizes.push_back(std::strtol(arguments[index], &end, 10));
        if (*end != '\0' || sizes.back() < 1)
            throw std::runtime_error(std::string(arguments[index]) + " is no number of entries");
    }
    if (sizes.empty())
        sizes = {1'000, 10'000, 100'000, 1'000'000};
    compare(contenders, sizes);
    return 0;
} catch (const std::exception &failure) {
    std::fprintf(stderr, "bench_listing: %s\n", failure.what());
    return 1;
}
