// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstddef>
#include <cstdlib>

/// What the filters of a PNG predict for a byte from those to its left, above it and to the left of
/// that one, which are of the same channel (ISO/IEC 15948, clause 9). Pixels are 8-bit RGBA.
namespace MWCore::PngPrediction {

inline constexpr std::size_t kPixelLength = 4; ///< bytes

constexpr int none(int /*left*/, int /*above*/, int /*corner*/) {
    return 0;
}

constexpr int sub(int left, int /*above*/, int /*corner*/) {
    return left;
}

constexpr int up(int /*left*/, int above, int /*corner*/) {
    return above;
}

constexpr int average(int left, int above, int /*corner*/) {
    return (left + above) / 2;
}

/// Whichever of the three is nearest to left + above - corner.
inline int paeth(int left, int above, int corner) {
    const int fromLeft = std::abs(above - corner);
    const int fromAbove = std::abs(left - corner);
    const int fromCorner = std::abs(left + above - 2 * corner);
    const int other = fromAbove <= fromCorner ? above : corner;
    return fromLeft <= fromAbove && fromLeft <= fromCorner ? left : other;
}

} // namespace MWCore::PngPrediction
