// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <filesystem>

#include <QImage>

/// The tables of the benchmark. Each throws a std::exception if a contender fails.
namespace compare {

// Whole processes. @p here is the folder of this benchmark's programs, @p folder one for files;
// photograph.png is there.

/// A family of the photograph: ours.icns in @p folder, and theirs.icns, which png2icns made.
void building(const std::filesystem::path &here, const std::filesystem::path &folder);

/// Every element of these families.
void extracting(const std::filesystem::path &here, const std::filesystem::path &folder);

// In this process, except for other programs.

void packers(const QImage &photograph);
void resampling(const QImage &photograph, const std::filesystem::path &folder);
void runLengths(const std::filesystem::path &folder);
void elements();

} // namespace compare
