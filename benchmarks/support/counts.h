// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <string>
#include <vector>

/// The numbers of entries in a benchmark's folders.
namespace counts {

/// The numbers on the command line, or @p defaults if there are none. Throws std::runtime_error for
/// an argument that is not a positive number.
[[nodiscard]] std::vector<long> fromArguments(int argumentCount, char **arguments,
                                              std::vector<long> defaults);

/// 1000000 is "1,000,000".
[[nodiscard]] std::string withThousands(long number);

/// Enough rounds for a stable median; fewer for large folders, which take long.
[[nodiscard]] int roundsFor(long entries);

} // namespace counts
