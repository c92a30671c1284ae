// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <string>

namespace MWCore::mwfile {

/// @p path made absolute, with "." and ".." resolved as the system would. Returns @p path unchanged
/// if the result does not lead to the same item (a folder in the path may be inaccessible, gone or
/// too deep).
[[nodiscard]] std::string absolutePath(const std::string &path);

/// @p path with all links resolved; unchanged on failure.
[[nodiscard]] std::string resolvedPath(const std::string &path);

} // namespace MWCore::mwfile
