// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

/// Makes empty files with names of typical length in @p folder, and the folder if it is missing.
/// Returns their paths.
inline std::vector<std::filesystem::path> makeFiles(const std::filesystem::path &folder,
                                                    long count) {
    std::filesystem::create_directories(folder);
    std::vector<std::filesystem::path> paths;
    for (long index = 0; index < count; ++index) {
        paths.push_back(folder / ("name of typical length " + std::to_string(index)));
        const std::ofstream made(paths.back());
    }
    return paths;
}
