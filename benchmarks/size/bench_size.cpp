// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Compares how long this library and similar programs take to measure a folder, with a full and
// with an empty page cache, and how soon a cancelled measurement ends. usage: bench_size
// [FOLDERS...]
#include "benchmarks/support/benchmark.h"
#include "benchmarks/support/counts.h"
#include "benchmarks/support/median.h"
#include "benchmarks/support/processes.h"
#include "benchmarks/support/SampleTree.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

using processes::Contender;
using processes::MeasuredBy;
using processes::Run;

/// The indices of contenders that are needed individually.
enum : std::size_t { kGdu = 2, kNcdu };

std::vector<Contender> contendersIn(const std::filesystem::path &here) {
    constexpr int kSomeUnreadable = 1;
    return {
        {"measureSize", {here / "size_fso"}, MeasuredBy::Caller},
        {"du -s", {"du", "-s"}, MeasuredBy::Caller, kSomeUnreadable},
        {"gdu -np", {"gdu", "-np"}, MeasuredBy::Caller},
        {"ncdu -0 -o /dev/null", {"ncdu", "-0", "-o", "/dev/null"}, MeasuredBy::Caller},
    };
}

/// Empties the page cache; false if that is not permitted.
bool dropPageCache() {
    sync();
    return static_cast<bool>(std::ofstream("/proc/sys/vm/drop_caches") << 3 << std::flush);
}

void printTable(const std::string &title, const std::vector<Contender> &contenders,
                const std::vector<Run> &runs) {
    const std::size_t fastest = runs[kGdu].nanoseconds < runs[kNcdu].nanoseconds ? kGdu : kNcdu;
    std::printf("\n| %s | ms | ours / this row | CPU ms | ours / this row | peak MiB |\n"
                "|---|---:|---:|---:|---:|---:|\n",
                title.c_str());
    for (std::size_t index = 0; index < contenders.size(); ++index)
        std::printf("| %s%s | %.0f | %.2f x | %.0f | %.2f x | %.1f |\n", contenders[index].what,
                    index == fastest ? " (faster)" : "", runs[index].nanoseconds / 1e6,
                    runs[0].nanoseconds / runs[index].nanoseconds,
                    runs[index].processorNanoseconds / 1e6,
                    runs[0].processorNanoseconds / runs[index].processorNanoseconds,
                    runs[index].bytes / (1 << 20));
    std::fflush(stdout);
}

void printCancellations(const std::string &folder, const Run &cancelled) {
    std::vector<double> times;
    for (const processes::Part &part : cancelled.parts)
        times.push_back(part.nanoseconds / 1e6);
    if (times.empty())
        return; // every measurement ended before it was cancelled
    std::printf("\n| %s | attempts | median ms | worst ms |\n"
                "|---|---:|---:|---:|\n"
                "| cancelled | %zu | %.2f | %.2f |\n",
                folder.c_str(), times.size(), median(times), std::ranges::max(times));
    std::fflush(stdout);
}

void compare(const std::filesystem::path &here, const std::string &name,
             const std::string &folder) {
    const std::vector<Contender> contenders = contendersIn(here);
    const Run cancelled =
        processes::run({"cancelled", {here / "size_cancelled"}, MeasuredBy::Itself}, folder);
    const std::string title = name + ", " + counts::withThousands(cancelled.entries) + " entries";
    printTable(title + ", warm", contenders, processes::mediansInTurn(contenders, folder, {7}));
    if (dropPageCache())
        printTable(title + ", cold", contenders,
                   processes::mediansInTurn(contenders, folder, {3, dropPageCache}));
    else
        std::printf("\nNo cold figures: only root can empty the page cache.\n");
    printCancellations(name, cancelled);
}

} // namespace

int main(int argumentCount, char **arguments) {
    return runBenchmark("bench_size", [&] {
        const std::filesystem::path here = std::filesystem::path(arguments[0]).parent_path();
        for (int index = 1; index < argumentCount; ++index)
            compare(here, arguments[index], arguments[index]);
        if (argumentCount > 1)
            return;
        compare(here, "/usr", "/usr");
        const SampleTree tree(100'000, 5);
        compare(here, "generated tree", tree.path());
    });
}
