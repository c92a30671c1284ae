// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace MWCore::mwfile {

/// Breaks @p text, styled or not, into lines of at most @p columns columns: after spaces, or
/// anywhere in a word that is longer than a line. At least one line.
[[nodiscard]] std::vector<std::string> wrappedText(std::string_view text, int columns);

} // namespace MWCore::mwfile
