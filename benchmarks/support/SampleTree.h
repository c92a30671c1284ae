// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "benchmarks/support/TemporaryFolder.h"

#include <filesystem>

/// A temporary tree. Every folder has up to ten subfolders, until there are @p folders in all; the
/// depth is the number of digits of @p folders. Each has @p filesPerFolder small files. Removed by
/// the destructor.
class SampleTree {
public:
    SampleTree(long folders, int filesPerFolder);

    [[nodiscard]] const std::filesystem::path &path() const { return top_.path(); }

private:
    [[nodiscard]] std::filesystem::path pathOf(long folder) const;

    TemporaryFolder top_;
};
