// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "benchmarks/support/TemporaryFolder.h"

#include <filesystem>

/// A temporary folder of generated entries: 5 % folders, 2 % links to another entry, small files
/// otherwise. Names have 25 characters; dates are spread over the last 400 days. Removed by the
/// destructor.
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
