// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Runs the contenders in turn on folders of increasing size and prints one table per size.
// usage: bench_listing [ENTRIES...]
#include "benchmarks/support/benchmark.h"
#include "benchmarks/support/counts.h"
#include "benchmarks/support/processes.h"
#include "benchmarks/support/SampleFolder.h"

#include <filesystem>

int main(int argumentCount, char **arguments) {
    return runBenchmark("bench_listing", [&] {
        using processes::MeasuredBy;
        const std::filesystem::path here = std::filesystem::path(arguments[0]).parent_path();
        const std::vector<long> sizes =
            counts::fromArguments(argumentCount, arguments, {1'000, 10'000, 100'000, 1'000'000});
        const processes::Comparison comparison({
            {"mfs, all fields and texts", {here / "list_mfs"}, MeasuredBy::Itself},
            {"mfs, including release", {here / "list_mfs_released"}, MeasuredBy::Itself},
            {"getdents + fstatat, nothing kept", {here / "list_bare"}, MeasuredBy::Itself},
            {"ls -lU", {"ls", "-lU"}, MeasuredBy::Caller},
            {"GIO enumerator, nothing kept", {here / "list_gio"}, MeasuredBy::Itself},
            {"QDir::entryInfoList", {here / "list_qt"}, MeasuredBy::Itself},
        });
        for (const long entries : sizes) {
            const SampleFolder folder(entries);
            processes::printTable("mfs / this row", comparison.contenders(), entries,
                                  comparison.medians(folder.path(), entries));
        }
    });
}
