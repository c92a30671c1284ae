// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <string>

namespace MWCore::mwfile {

/// @p path from the root folder on, without "." and "..", as the system would resolve them. Where
/// that does not lead to the same item (the folders on the way may be closed to the user, gone, or
/// too deep) it is @p path as it stands.
[[nodiscard]] std::string absolutePath(const std::string &path);

/// The path without links of what @p path leads to; @p path itself where that cannot be told.
[[nodiscard]] std::string followedPath(const std::string &path);

} // namespace MWCore::mwfile
