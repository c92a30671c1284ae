// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "benchmarks/support/TemporaryFolder.h"

#include <filesystem>

/// A temporary folder of made entries: 5 % folders, 2 % links to a neighbour, the others small
/// files, with names of 25 characters and dates over the last 400 days. Removed when it goes.
class SampleFolder {
public:
    enum class Names {
        Plain,
        SomeWithADot, ///< 1 % begin with a dot
    };

    explicit SampleFolder(long entries, Names names = Names::Plain);

    [[nodiscard]] const std::filesystem::path &path() const { return folder_.path(); }

private:
    TemporaryFolder folder_;
};
