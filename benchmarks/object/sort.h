// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <filesystem>

/// Prints how long sorting the children of @p folder, which has @p entries, by name takes, compared
/// with std::stable_sort of prepared keys. Each round starts from the system's order.
void compareSorting(const std::filesystem::path &folder, long entries);
