// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/pictures/ImageInterpolation.h"

#include <cstddef>
#include <vector>

namespace MWCore {

/// How one output pixel is computed along one axis: the sum of the @p count source pixels from
/// @p first on, each times its weight.
struct ScaledPixel {
    int first = 0;
    int count = 0;
    std::size_t weights = 0; ///< index of the first weight
    /// The part of the output pixel that the target covers. The weights add up to it.
    float coverage = 0;
    /// The source pixels on both sides of the output pixel's centre. Where an axis is limited, the
    /// result is kept between the two.
    int before = 0;
    int after = 0;
};

/// How the pixels of one axis, x or y, are computed. Holds about as many numbers as source and
/// output pixels.
struct ScalingAxis {
    int begin = 0; ///< the output pixel that comes first; those that the target misses are left out
    std::vector<ScaledPixel> pixels;
    std::vector<float> weights;
    bool isLimited = false;

    [[nodiscard]] bool isEmpty() const { return pixels.empty(); }
    /// The range of source pixels that is needed.
    [[nodiscard]] int firstSource() const { return pixels.front().first; }
    [[nodiscard]] int endOfSource() const { return pixels.back().first + pixels.back().count; }
};

/// Scales @p length source pixels, at least one, into the interval from @p start to @p end of
/// @p canvas output pixels.
[[nodiscard]] ScalingAxis scalingAxis(int length, int canvas, double start, double end,
                                      NSImageInterpolation interpolation);

} // namespace MWCore
