// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <string>
#include <vector>

/// How many entries the folders of a benchmark have.
namespace counts {

/// The numbers on the command line, @p otherwise without any. Throws std::runtime_error for what is
/// no number above 0.
[[nodiscard]] std::vector<long> fromArguments(int argumentCount, char **arguments,
                                              std::vector<long> otherwise);

/// 1000000 is "1,000,000".
[[nodiscard]] std::string withThousands(long number);

/// Rounds enough for a steady median, and few for what takes long anyway.
[[nodiscard]] int roundsFor(long entries);

} // namespace counts
