// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>

namespace MWCore {

/// How pixels are computed when an image is scaled. Hosts store the numbers, so they are fixed.
enum NSImageInterpolation : uint32_t {
    NSImageInterpolationDefault = 0, ///< the same as high
    NSImageInterpolationNone = 1,    ///< the nearest pixel
    NSImageInterpolationLow = 2,     ///< bilinear
    NSImageInterpolationHigh = 3,    ///< the average of the area that a pixel covers
    NSImageInterpolationMedium = 4,  ///< the same as low
};

} // namespace MWCore
