// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "benchmarks/support/SampleTree.h"

#include "benchmarks/support/check.h"

#include <fstream>
#include <string>

#include <unistd.h>

SampleTree::SampleTree(long folders, int filesPerFolder) {
    for (long folder = 1; folder <= folders; ++folder) {
        const std::filesystem::path path = pathOf(folder);
        std::filesystem::create_directory(path);
        for (int file = 1; file <= filesPerFolder; ++file) {
            std::ofstream content(path / ("photograph-" + std::to_string(file) + ".jpeg"));
            check((content << path.native() << std::flush).good(), path.c_str());
        }
    }
    sync(); // otherwise the system would write it during a measurement
}

/// Folder 123 is "1/12/123".
std::filesystem::path SampleTree::pathOf(long folder) const {
    return folder == 0 ? path() : pathOf(folder / 10) / std::to_string(folder);
}
