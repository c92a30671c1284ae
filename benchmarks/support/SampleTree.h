// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "benchmarks/support/TemporaryFolder.h"

#include <filesystem>

/// A temporary tree: ten folders in each folder until there are @p folders, the number of digits of
/// which is its depth, and as many small files in each. Removed when it goes.
class SampleTree {
public:
    SampleTree(long folders, int filesAFolder);

    [[nodiscard]] const std::filesystem::path &path() const { return top_.path(); }

private:
    [[nodiscard]] std::filesystem::path pathOf(long folder) const;

    TemporaryFolder top_;
};
