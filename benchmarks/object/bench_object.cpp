// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Measures how long it takes to show a folder through objects, compared with programs that read the
// same: the whole request, its parts, and sorting alone, on folders of increasing size.
// usage: bench_object [ENTRIES...]
#include "benchmarks/object/sort.h"
#include "benchmarks/support/benchmark.h"
#include "benchmarks/support/counts.h"
#include "benchmarks/support/processes.h"
#include "benchmarks/support/SampleFolder.h"

#include <cstdio>
#include <filesystem>
#include <vector>

namespace {

using processes::Run;

/// The indices of contenders that are needed individually.
enum : std::size_t { kObjects, kRecords };

std::vector<processes::Contender> contendersIn(const std::filesystem::path &here) {
    using processes::MeasuredBy;
    return {
        {"objects, whole request", {here / "object_fso"}, MeasuredBy::Itself},
        {"records only", {here.parent_path() / "listing" / "list_mfs"}, MeasuredBy::Itself},
        {"ls -lU", {"ls", "-lU"}, MeasuredBy::Caller},
        {"GIO enumerator, nothing kept", {here / "object_gio"}, MeasuredBy::Itself},
        {"QDir::entryInfoList, sorted", {here / "object_qt"}, MeasuredBy::Itself},
    };
}

/// Splits the first part of the request in two, with the time of the contender that only lists the
/// records.
std::vector<processes::Part> partsOf(const Run &objects, const Run &records) {
    std::vector<processes::Part> parts = objects.parts;
    parts.front() = {"objects made and identified",
                     parts.front().nanoseconds - records.nanoseconds};
    parts.insert(parts.begin(), {"records listed", records.nanoseconds});
    return parts;
}

void printParts(const Run &objects, const Run &records, long entries) {
    std::printf("\n| parts, %s entries | ms | ns per entry | share of the request |\n"
                "|---|---:|---:|---:|\n",
                counts::withThousands(entries).c_str());
    for (const processes::Part &part : partsOf(objects, records))
        std::printf("| %s | %.2f | %.0f | %.0f %% |\n", part.what.c_str(), part.nanoseconds / 1e6,
                    part.nanoseconds / static_cast<double>(entries),
                    100 * part.nanoseconds / objects.nanoseconds);
    std::fflush(stdout);
}

/// The smallest folder whose time per entry can be compared with that of larger ones: in smaller
/// folders the fixed cost of a call dominates.
constexpr long kSmallestComparable = 10'000;

struct Measured {
    long entries;
    double nanosecondsPerEntry;
};

void printGrowth(const std::vector<Measured> &sizes) {
    const Measured *first = nullptr;
    for (const Measured &size : sizes) {
        if (size.entries < kSmallestComparable)
            continue;
        if (!first) {
            first = &size;
            std::printf("\n| objects, whole request | ns per entry | relative to %s entries |\n"
                        "|---|---:|---:|\n",
                        counts::withThousands(size.entries).c_str());
        }
        std::printf("| %s entries | %.0f | %.2f x |\n", counts::withThousands(size.entries).c_str(),
                    size.nanosecondsPerEntry,
                    size.nanosecondsPerEntry / first->nanosecondsPerEntry);
    }
}

} // namespace

int main(int argumentCount, char **arguments) {
    return runBenchmark("bench_object", [&] {
        const std::vector<long> sizes =
            counts::fromArguments(argumentCount, arguments, {1'000, 10'000, 100'000, 1'000'000});
        const processes::Comparison comparison(
            contendersIn(std::filesystem::path(arguments[0]).parent_path()));
        std::vector<Measured> measured;
        for (const long entries : sizes) {
            const SampleFolder folder(entries, SampleFolder::Names::SomeWithADot);
            const std::vector<Run> runs = comparison.medians(folder.path(), entries);
            processes::printTable("objects / this row", comparison.contenders(), entries, runs);
            printParts(runs[kObjects], runs[kRecords], entries);
            compareSorting(folder.path(), entries);
            measured.push_back(
                {entries, runs[kObjects].nanoseconds / static_cast<double>(entries)});
        }
        printGrowth(measured);
    });
}
