// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/fuzz/fuzz.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

std::string contentOf(const std::filesystem::path &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Runs one input in an allocation of its exact size, so that a read beyond its end is detected.
void replay(const std::filesystem::path &path) {
    const std::string content = contentOf(path);
    const std::vector<uint8_t> input(content.begin(), content.end());
    LLVMFuzzerTestOneInput(input.data(), input.size());
}

} // namespace

/// Runs the fuzz target on every file in a folder, which is the last argument.
int main(int count, char **arguments) {
    int replayed = 0;
    for (const auto &entry : std::filesystem::directory_iterator(arguments[count - 1])) {
        std::printf("%s\n", entry.path().filename().c_str());
        replay(entry.path());
        ++replayed;
    }
    return replayed > 0 ? 0 : 1;
}
