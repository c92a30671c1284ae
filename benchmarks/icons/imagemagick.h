// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <string>

#include <unistd.h>

/// The command of ImageMagick 6 or, on newer systems, of ImageMagick 7.
[[nodiscard]] inline std::string imageMagick() {
    constexpr const char *kVersion6 = "/usr/bin/convert-im6.q16";
    return access(kVersion6, X_OK) == 0 ? kVersion6 : "magick";
}
