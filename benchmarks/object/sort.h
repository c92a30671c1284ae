// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <filesystem>

/// Prints what sorting the children of @p folder, which has @p entries, by name costs beside
/// std::stable_sort of keys that are ready. Each round begins in the order of the system.
void compareSorting(const std::filesystem::path &folder, long entries);
