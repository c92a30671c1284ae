// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "benchmarks/support/TemporaryFolder.h"

#include <filesystem>

/// A temporary home folder with items of mixed kinds: 35 % images, then documents, sources, music,
/// archives, folders, links, files without extension, and a few desktop entries, bundles, files
/// with custom icons and, where that is permitted, locked files. Removed by the destructor.
class SampleHome {
public:
    explicit SampleHome(long items);
    SampleHome(const SampleHome &) = delete;
    SampleHome &operator=(const SampleHome &) = delete;
    ~SampleHome();

    [[nodiscard]] const std::filesystem::path &path() const { return folder_.path(); }

private:
    TemporaryFolder folder_;
};
