// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Compares how long this library and similar programs take to build, read and scale icons.
// usage: bench_icons
#include "benchmarks/icons/compare.h"
#include "benchmarks/icons/pictures.h"
#include "benchmarks/support/benchmark.h"
#include "benchmarks/support/check.h"
#include "benchmarks/support/TemporaryFolder.h"

#include <cstdlib>
#include <filesystem>

#include <unistd.h>

int main(int, char **arguments) {
    return runBenchmark("bench_icons", [&] {
        constexpr const char *kMemoryFolder = "/dev/shm"; // no disk is measured
        constexpr int kLeaveIfSet = 0;
        if (access(kMemoryFolder, W_OK) == 0)
            setenv("TMPDIR", kMemoryFolder, kLeaveIfSet);
        const std::filesystem::path here = std::filesystem::path(arguments[0]).parent_path();
        const TemporaryFolder temporary;
        const std::filesystem::path &folder = temporary.path();
        const QImage photograph = pictures::photograph(1024);
        require(photograph.save(QString::fromStdString(folder / "photograph.png")),
                "the photograph cannot be written");
        compare::building(here, folder);
        compare::extracting(here, folder);
        compare::packers(photograph);
        compare::resampling(photograph, folder);
        compare::elements();
        compare::runLengths(folder);
    });
}
