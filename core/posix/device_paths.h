// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <string_view>

namespace MWCore {

/// Whether a folder with this path is not listed. "/devices" counts as one, too.
[[nodiscard]] constexpr bool isDevicePath(std::string_view path) {
    return path.starts_with("/dev");
}

} // namespace MWCore
